// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioPlayer.h"
#include "support/FakeAudioPlayer.h"

#include <chrono>

namespace velarin {

class Clock;

}

namespace velarin::test {

// What the stations of the offline program do.
enum class StationsBehaviour
{
    Sound,
    SoundWithoutTitle,
    NeverAnswer,
    Refuse,
};

// A player without sound that behaves as a station would, in real time: it connects for a moment, then plays, and tells
// a title now and then.
class OfflinePlayer final : public AudioPlayer
{
public:
    OfflinePlayer(Clock& clock, StationsBehaviour behaviour);

    Observation observe(AudioItemId item, ItemHandlers handlers) override;
    void setTimeControlHandler(std::function<void(TimeControl)> handler) override;
    void replaceCurrentItem(std::optional<AudioItem> item) override;
    std::optional<AudioItemId> currentItem() const override { return m_fake.currentItem(); }
    ItemStatus currentItemStatus() const override { return m_fake.currentItemStatus(); }
    void play() override;
    void playAtRate(double rate) override;
    void pause() override;
    void seek(double seconds) override { m_fake.seek(seconds); }
    TimeControl timeControl() const override { return m_fake.timeControl(); }
    double currentTime() const override;
    void setVolume(float volume) override { m_fake.setVolume(volume); }
    float volume() const override { return m_fake.volume(); }

private:
    void connected();
    void sound();
    void tellTitle();

    Clock& m_clock;
    const StationsBehaviour m_behaviour;
    FakeAudioPlayer m_fake;
    std::chrono::nanoseconds m_soundsSince{ 0 };
    int m_titles{ 0 };
    Task m_step;
};

}
