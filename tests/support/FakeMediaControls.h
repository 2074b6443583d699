// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/MediaControls.h"

#include <QMap>

#include <vector>

namespace velarin::test {

class FakeMediaControls final : public MediaControls
{
public:
    struct Published
    {
        std::optional<NowPlaying> nowPlaying;
        NowPlayingState state{ NowPlayingState::Stopped };
    };

    void setHandlers(Handlers newHandlers) override { handlers = std::move(newHandlers); }
    void setApplicationHandlers(ApplicationHandlers newHandlers) override { application = std::move(newHandlers); }
    void setEnabled(MediaCommand command, bool on) override { enabled.insert(command, on); }
    void publish(const std::optional<NowPlaying>& nowPlaying, NowPlayingState state) override
    {
        published.push_back({ nowPlaying, state });
    }
    void publishVolume(double newVolume) override { volume = newVolume; }

    Handlers handlers;
    ApplicationHandlers application;
    QMap<MediaCommand, bool> enabled;
    // Every call of publish(), in order.
    std::vector<Published> published;
    double volume{ -1.0 };
};

}
