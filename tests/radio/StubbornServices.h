// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioPlayer.h"
#include "platform/Clock.h"

#include <map>

namespace velarin::test {

// A player whose events cannot be held back: what was on its way when its observers were detached still arrives.
class StubbornAudioPlayer final : public AudioPlayer
{
public:
    explicit StubbornAudioPlayer(AudioPlayer& player)
        : m_player(player)
    {
    }

    Observation observe(AudioItemId item, ItemHandlers handlers) override
    {
        heard[item] = handlers;
        return m_player.observe(item, std::move(handlers));
    }
    void setTimeControlHandler(std::function<void(TimeControl)> handler) override
    {
        m_player.setTimeControlHandler(std::move(handler));
    }
    void replaceCurrentItem(std::optional<AudioItem> item) override { m_player.replaceCurrentItem(std::move(item)); }
    std::optional<AudioItemId> currentItem() const override { return m_player.currentItem(); }
    ItemStatus currentItemStatus() const override { return m_player.currentItemStatus(); }
    void play() override { m_player.play(); }
    void playAtRate(double rate) override { m_player.playAtRate(rate); }
    void pause() override { m_player.pause(); }
    void seek(double seconds) override { m_player.seek(seconds); }
    TimeControl timeControl() const override { return m_player.timeControl(); }
    double currentTime() const override { return m_player.currentTime(); }
    void setVolume(float volume) override { m_player.setVolume(volume); }
    float volume() const override { return m_player.volume(); }

    // What was ever attached, detached or not.
    std::map<AudioItemId, ItemHandlers> heard;

private:
    AudioPlayer& m_player;
};

// A clock whose timers cannot be cancelled: each is already on its way.
class StubbornClock final : public Clock
{
public:
    explicit StubbornClock(Clock& clock)
        : m_clock(clock)
    {
    }

    QDateTime now() const override { return m_clock.now(); }
    std::chrono::nanoseconds continuous() const override { return m_clock.continuous(); }
    Task after(std::chrono::nanoseconds delay, std::function<void()> fire) override
    {
        m_clock.after(delay, std::move(fire)).release();
        return {};
    }

private:
    Clock& m_clock;
};

}
