// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "coordination/PlaybackEngine.h"

#include <QStringList>

#include <functional>

namespace velarin::test {

// An engine that notes what is asked of it and answers what the test says.
class FakeEngine final : public PlaybackEngine
{
public:
    void resume() override { calls.append(QStringLiteral("resume")); }
    void pause() override
    {
        calls.append(QStringLiteral("pause"));
        if (onPause)
            onPause();
    }
    void togglePlayback() override { calls.append(QStringLiteral("togglePlayback")); }
    void stop() override { calls.append(QStringLiteral("stop")); }
    void next() override { calls.append(QStringLiteral("next")); }
    void previous() override { calls.append(QStringLiteral("previous")); }
    bool isPlaying() const override { return playing; }
    bool isSounding() const override { return sounding; }
    qsizetype queueSize() const override { return queue; }
    std::optional<double> position() const override { return place; }
    void seek(double seconds) override { calls.append(QStringLiteral("seek %1").arg(seconds)); }
    QString heartbeatText() const override { return heartbeat; }
    void setVolume(float volume) override
    {
        level = volume;
        if (onVolume)
            onVolume();
    }

    QStringList calls;
    bool playing{ false };
    bool sounding{ false };
    qsizetype queue{ 0 };
    std::optional<double> place;
    QString heartbeat;
    // Negative until it was set.
    float level{ -1.0F };
    std::function<void()> onPause;
    std::function<void()> onVolume;
};

}
