// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/LiveAudioPlayer.h"

#include "base/Overloaded.h"
#include "live/EngineLoop.h"
#include "live/LiveEngine.h"
#include "live/LiveSession.h"
#include "live/SoundMemory.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace velarin::live {

struct LiveAudioPlayer::EngineSide
{
    SoundMemory memory;
    std::unique_ptr<LiveSession> session;
};

namespace {

// In a later turn of the main loop, from any thread.
void onMainThread(std::function<void()> work)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
}

template<typename Handler, typename... Values>
void callIfSet(const Handler& handler, const Values&... values)
{
    if (handler)
        handler(values...);
}

}

LiveAudioPlayer::LiveAudioPlayer(EngineStarter startEngine)
    : m_startEngine(std::move(startEngine))
{
}

LiveAudioPlayer::~LiveAudioPlayer()
{
    *m_self = nullptr;
    m_observers->clear();
    // What was posted runs before the engine ends.
    post([](EngineSide& side) { side.session.reset(); });
}

AudioPlayer::Observation LiveAudioPlayer::observe(AudioItemId item, ItemHandlers handlers)
{
    const quint64 number = ++m_lastObserver;
    m_observers->emplace(
        number, std::make_shared<const std::pair<AudioItemId, ItemHandlers>>(item, std::move(handlers)));
    return Observation([observers = std::weak_ptr(m_observers), number] {
        if (const auto alive = observers.lock())
            alive->erase(number);
    });
}

void LiveAudioPlayer::setTimeControlHandler(std::function<void(TimeControl)> handler)
{
    m_timeControlHandler = std::move(handler);
}

void LiveAudioPlayer::replaceCurrentItem(std::optional<AudioItem> item)
{
    ++m_session;
    m_status = ItemStatus::Unknown;
    m_item = item ? std::optional(item->id) : std::nullopt;
    m_heard = item ? std::make_shared<HeardTime>(0.0) : nullptr;
    if (!item) {
        post([](EngineSide& side) { side.session.reset(); });
        sinkOf(Origin{ m_session, 0 })(m_wantsToPlay ? TimeControl::Waiting : TimeControl::Paused);
        return;
    }
    if (!m_engine) {
        m_engine = m_startEngine();
        m_engineSide = std::make_shared<EngineSide>();
    }
    LiveEventSink tell = sinkOf(Origin{ m_session, item->id });
    post([&engine = *m_engine, item = *item, heard = m_heard, tell = std::move(tell), volume = m_volume,
             plays = m_wantsToPlay](EngineSide& side) {
        side.session.reset();
        side.session =
            std::make_unique<LiveSession>(item, volume, LiveSession::Parts{ engine, side.memory, heard, tell });
        if (plays)
            side.session->play();
    });
}

void LiveAudioPlayer::play()
{
    m_wantsToPlay = true;
    if (!m_item) {
        sinkOf(Origin{ m_session, 0 })(TimeControl::Waiting);
        return;
    }
    post([](EngineSide& side) { side.session->play(); });
}

void LiveAudioPlayer::playAtRate(double rate)
{
    Q_UNUSED(rate)
    play();
}

void LiveAudioPlayer::pause()
{
    m_wantsToPlay = false;
    if (!m_item) {
        sinkOf(Origin{ m_session, 0 })(TimeControl::Paused);
        return;
    }
    post([](EngineSide& side) { side.session->pause(); });
}

void LiveAudioPlayer::seek(double seconds)
{
    Q_UNUSED(seconds)
}

double LiveAudioPlayer::currentTime() const
{
    return m_heard ? m_heard->load(std::memory_order_relaxed) : std::numeric_limits<double>::quiet_NaN();
}

void LiveAudioPlayer::setVolume(float volume)
{
    m_volume = std::isfinite(volume) ? std::clamp(volume, 0.0F, 1.0F) : m_volume;
    post([volume = m_volume](EngineSide& side) {
        if (side.session)
            side.session->setVolume(volume);
    });
}

void LiveAudioPlayer::post(std::function<void(EngineSide&)> work)
{
    if (m_engine)
        m_engine->loop().post([side = m_engineSide, work = std::move(work)] { work(*side); });
}

LiveEventSink LiveAudioPlayer::sinkOf(Origin origin)
{
    return [origin, self = std::weak_ptr(m_self)](LiveEvent event) {
        onMainThread([origin, self, event = std::move(event)] {
            const auto player = self.lock();
            if (player && *player)
                (*player)->deliver(origin, event);
        });
    };
}

void LiveAudioPlayer::deliver(Origin origin, const LiveEvent& event)
{
    const bool isCurrent = origin.session == m_session;
    const auto status = [&](ItemStatus value, const AudioErrorChain& cause) {
        if (isCurrent)
            m_status = value;
        tellObservers(origin.item, [&](const ItemHandlers& to) { callIfSet(to.status, value, cause); });
    };
    const auto tell = [&](auto handler, const auto&... values) {
        tellObservers(origin.item, [&](const ItemHandlers& to) { callIfSet(to.*handler, values...); });
    };
    std::visit(Overloaded{
                   [&](const BecameReady&) { status(ItemStatus::Ready, {}); },
                   [&](const CouldNotPlay& event_) { status(ItemStatus::Failed, event_.cause); },
                   [&](const BecameLikelyToKeepUp&) { tell(&ItemHandlers::likelyToKeepUp); },
                   [&](const Stalled&) { tell(&ItemHandlers::stalled); },
                   [&](const FailedToPlayToEnd& event_) { tell(&ItemHandlers::failedToPlayToEnd, event_.cause); },
                   [&](const PlayedToEnd&) { tell(&ItemHandlers::playedToEnd); },
                   [&](const HttpStatusSeen& event_) { tell(&ItemHandlers::httpStatus, event_.status); },
                   [&](const TitleHeard& event_) { tell(&ItemHandlers::title, event_.title); },
                   [&](TimeControl value) { deliverTimeControl(origin.session, value); },
               },
        event);
}

// Of a session that was replaced it says nothing about the present item.
void LiveAudioPlayer::deliverTimeControl(quint64 session, TimeControl value)
{
    if (session != m_session || value == m_timeControl)
        return;
    m_timeControl = value;
    if (const auto handler = m_timeControlHandler)
        handler(value);
}

// By number, since a handler may attach and detach observers, or destroy the player.
void LiveAudioPlayer::tellObservers(AudioItemId item, const std::function<void(const ItemHandlers&)>& tell)
{
    const std::shared_ptr<Observers> observers = m_observers;
    std::vector<quint64> numbers;
    for (const auto& [number, observer] : *observers) {
        if (observer->first == item)
            numbers.push_back(number);
    }
    for (const quint64 number : numbers) {
        const auto found = observers->find(number);
        if (found == observers->end())
            continue;
        const auto keptAlive = found->second;
        tell(keptAlive->second);
    }
}

}
