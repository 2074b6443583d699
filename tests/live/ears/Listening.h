// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/LiveAudioPlayer.h"
#include "live/LiveThread.h"
#include "platform/gstreamer/output/DeviceSelection.h"
#include "support/ears/Ear.h"
#include "support/ears/Programme.h"
#include "support/ears/SoundServer.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace velarin::test {

// The whole live engine at work, on a silent device of its own with an ear on it. Up to four can listen side by side.
class Listening
{
    // Before the player, which is made with it.
    std::shared_ptr<DeviceSelection> m_selection{ std::make_shared<DeviceSelection>() };

public:
    explicit Listening(int device, live::TransportSettings transport = {});
    ~Listening();
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;

    // Loads the address and plays it, as the radio does: with its two headers.
    void play(const QByteArray& url, double forwardBuffer = 0.0);

    // Of the ear, from the call of play() on.
    [[nodiscard]] EarReport heard() const { return ear.report(m_playedAt); }
    [[nodiscard]] double secondsSincePlay() const { return ear.now() - m_playedAt; }
    [[nodiscard]] bool told(const QString& event) const { return events.contains(event); }

    Ear ear;
    std::unique_ptr<live::LiveAudioPlayer> player;
    // What observers heard, in words: "playing", "ready", "failed: http 404", "title X".
    QStringList events;

private:
    std::vector<AudioPlayer::Observation> m_observations;
    double m_playedAt{ 0.0 };
};

// Lets the event loop turn for so long.
void listenFor(double seconds);

// "domain code" of the first link.
[[nodiscard]] QString inWords(const AudioErrorChain& chain);

}
