// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/LiveEvent.h"
#include "platform/AudioPlayer.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace velarin::live {

class EngineLoop;
class LiveEngine;

// The player of the radio: the main thread's side of a LiveSession on the engine's thread. Commands are posted there,
// what happens comes back as queued calls. A live item knows no rate and no seeking.
class LiveAudioPlayer final : public AudioPlayer
{
public:
    // Called once, with the first item: a program that never plays has no engine.
    using EngineStarter = std::function<std::shared_ptr<LiveEngine>()>;

    explicit LiveAudioPlayer(EngineStarter startEngine);
    // The sound ends, and no handler is called any more.
    ~LiveAudioPlayer() override;

    [[nodiscard]] Observation observe(AudioItemId item, ItemHandlers handlers) override;
    void setTimeControlHandler(std::function<void(TimeControl)> handler) override;
    void replaceCurrentItem(std::optional<AudioItem> item) override;
    [[nodiscard]] std::optional<AudioItemId> currentItem() const override { return m_item; }
    [[nodiscard]] ItemStatus currentItemStatus() const override { return m_status; }
    void play() override;
    void playAtRate(double rate) override;
    void pause() override;
    void seek(double seconds) override;
    [[nodiscard]] TimeControl timeControl() const override { return m_timeControl; }
    [[nodiscard]] double currentTime() const override;
    void setVolume(float volume) override;
    [[nodiscard]] float volume() const override { return m_volume; }

private:
    struct EngineSide;
    // What an event is of: items may come back, sessions do not.
    struct Origin
    {
        quint64 session{ 0 };
        AudioItemId item{ 0 };
    };
    using Observers = std::map<quint64, std::shared_ptr<const std::pair<AudioItemId, ItemHandlers>>>;

    void post(std::function<void(EngineSide&)> work);
    [[nodiscard]] LiveEventSink sinkOf(Origin origin);
    void deliver(Origin origin, const LiveEvent& event);
    void deliverTimeControl(quint64 session, TimeControl value);
    void tellObservers(AudioItemId item, const std::function<void(const ItemHandlers&)>& tell);

    EngineStarter m_startEngine;
    std::shared_ptr<LiveEngine> m_engine;
    // Made here, used and destroyed on the engine's thread.
    std::shared_ptr<EngineSide> m_engineSide;

    // Main thread only.
    std::shared_ptr<Observers> m_observers{ std::make_shared<Observers>() };
    std::function<void(TimeControl)> m_timeControlHandler;
    quint64 m_lastObserver{ 0 };
    quint64 m_session{ 0 };
    std::optional<AudioItemId> m_item;
    ItemStatus m_status{ ItemStatus::Unknown };
    TimeControl m_timeControl{ TimeControl::Paused };
    bool m_wantsToPlay{ false };
    float m_volume{ 1.0F };
    // Written on the engine's thread.
    std::shared_ptr<std::atomic<double>> m_heard;

    // Events under way find nobody once this is gone.
    std::shared_ptr<LiveAudioPlayer*> m_self{ std::make_shared<LiveAudioPlayer*>(this) };
};

}
