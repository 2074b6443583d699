// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/MediaControls.h"
#include "platform/freedesktop/MprisArtwork.h"
#include "platform/freedesktop/MprisModel.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>

namespace velarin {

class MprisPlayerAdaptor;

// The media controls as MPRIS 2.2 has them: org.mpris.MediaPlayer2.velarin on the session bus.
//
// It shows what was last published. Changes of one turn of the event loop go out together in the next, each property
// once and only if it differs from what was told before. Every method acts, also where its "Can" property is false.
// Without a bus, or with the name taken, nothing is shown and no command comes.
class MprisControls final : public MediaControls
{
public:
    // `clock` runs Position on. `artworkFolder` holds the picture of what sounds and belongs to this object alone;
    // empty where there is no place for it.
    MprisControls(const QDBusConnection& sessionBus, Clock& clock, Executor& executor, const QString& artworkFolder);
    ~MprisControls() override;

    // $XDG_RUNTIME_DIR/velarin, or empty where the session has no such folder.
    [[nodiscard]] static QString userArtworkFolder();

    void setHandlers(Handlers handlers) override;
    void setApplicationHandlers(ApplicationHandlers handlers) override;
    void setEnabled(MediaCommand command, bool enabled) override;
    void publish(const std::optional<NowPlaying>& nowPlaying, NowPlayingState state) override;
    void publishVolume(double volume) override;

private:
    void enterBus();
    void showTime(const std::optional<NowPlaying>& nowPlaying);
    void showMetadata();
    void tellSoon();
    void tell();

    QDBusConnection m_bus;
    bool m_isOnBus{ false };
    MprisModel m_model;
    MprisArtwork m_artwork;
    std::optional<NowPlaying> m_nowPlaying;

    // What listeners know, and whether they are about to be told more.
    MprisState m_told;
    bool m_isTelling{ false };
    bool m_hasJumped{ false };

    // The object on the bus; its two adaptors belong to it.
    std::unique_ptr<QObject> m_object;
    MprisPlayerAdaptor* m_player{ nullptr };
};

}
