// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/RadioPlayer.h"

#include "catalogue/StationRepository.h"
#include "coordination/AlarmSession.h"
#include "coordination/PlaybackCoordinator.h"
#include "diagnostics/Diagnostics.h"
#include "platform/Clock.h"
#include "radio/RadioLog.h"
#include "radio/ReconnectPolicy.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace velarin {

RadioPlayer::RadioPlayer(RadioPlayerServices services)
    : m_services(services)
{
    m_services.player.setTimeControlHandler([self = QPointer(this)](TimeControl control) {
        if (self)
            self->timeControlChanged(control);
    });
    observeSystemSleep();
    m_services.coordinator.configureRemoteCommands();
    startNetworkMonitor();
}

RadioPlayer::~RadioPlayer() = default;

void RadioPlayer::play(const Station& station, const std::optional<QList<Station>>& queue, bool keepSkipCount)
{
    m_services.coordinator.activate(PlaybackCoordinator::Source::radio);
    if (!keepSkipCount)
        m_skipsInARow = 0;
    qCInfo(radioLog, "control: play %s", qUtf8Printable(station.name));
    m_services.diagnostics.append(DiagnosticCategory::playback, QStringLiteral("Avvio %1").arg(station.name));
    setQueue(queue ? *queue : m_services.repository.queue(station).stations, station);
    start(station);
}

void RadioPlayer::setQueue(const QList<Station>& stations, const Station& station)
{
    const auto found = std::find_if(
        stations.cbegin(), stations.cend(), [&](const Station& candidate) { return candidate.id == station.id; });
    if (found == stations.cend()) {
        m_queue = { station };
        m_queueIndex = 0;
    } else {
        m_queue = stations;
        m_queueIndex = found - stations.cbegin();
    }
}

void RadioPlayer::start(const Station& station)
{
    endAlarm(QStringLiteral("radio scelta"));
    invalidateTimers();
    detachItemObservers();
    ++m_generation;
    m_station = station;
    m_songTitle = std::nullopt;
    m_songArtist = std::nullopt;
    m_services.repository.setLastPlayed(station.id);
    m_wantsAudio = true;
    m_resumeWhenOnline = false;
    m_usingAlternateStream = false;
    m_failures = 0;
    m_patientRetries = 0;
    m_hasAudioSinceConnect = false;
    m_pausedAt = std::nullopt;
    // The quality stays as it is: a weak line is weak for every station.
    loadArtwork(station);
    connectStream(1);
}

void RadioPlayer::resumeLast()
{
    qCInfo(radioLog, "control: resumeLast");
    const std::optional<StationQueue> last = m_services.repository.resumeQueue();
    if (!last)
        return;
    m_queue = last->stations;
    m_queueIndex = last->index;
    start(last->stations.at(last->index));
}

void RadioPlayer::resume()
{
    m_services.coordinator.activate(PlaybackCoordinator::Source::radio);
    qCInfo(radioLog, "control: resume (state %s)", qUtf8Printable(toText(m_state)));
    const std::optional<Station> station = m_station;
    if (!station)
        resumeLast();
    else if (is<Paused>(m_state) && canResumeInPlace())
        resumeInPlace();
    else if (!isSounding())
        start(*station);
}

bool RadioPlayer::canResumeInPlace() const
{
    return m_pausedAt && m_services.clock.continuous() - *m_pausedAt < ReconnectPolicy::resumeLimit &&
           m_services.player.currentItem() && m_services.player.currentItemStatus() == ItemStatus::Ready;
}

void RadioPlayer::resumeInPlace()
{
    m_wantsAudio = true;
    m_services.player.play();
    armStallWatchdog();
    setState(Buffering{});
}

void RadioPlayer::pause()
{
    if (!station())
        return;
    endAlarm(QStringLiteral("pausa"));
    qCInfo(radioLog, "control: pause");
    m_services.diagnostics.append(DiagnosticCategory::remote, QStringLiteral("Pausa richiesta"));
    m_wantsAudio = false;
    m_resumeWhenOnline = false;
    invalidateTimers();
    m_services.player.pause();
    m_pausedAt = m_services.clock.continuous();
    setState(Paused{});
}

void RadioPlayer::togglePlayback()
{
    if (isSounding())
        pause();
    else
        resume();
}

void RadioPlayer::stop()
{
    endAlarm(QStringLiteral("stop"));
    m_wantsAudio = false;
    m_resumeWhenOnline = false;
    invalidateTimers();
    detachItemObservers();
    m_services.player.pause();
    m_services.player.replaceCurrentItem(std::nullopt);
    setState(Idle{});
}

void RadioPlayer::next()
{
    if (queueSize() < 2)
        return;
    qCInfo(radioLog, "control: next");
    step(1);
}

void RadioPlayer::previous()
{
    if (queueSize() < 2)
        return;
    qCInfo(radioLog, "control: previous");
    step(-1);
}

void RadioPlayer::step(qint64 places)
{
    m_queueIndex = (m_queueIndex + places + queueSize()) % queueSize();
    start(queue().at(m_queueIndex));
}

bool RadioPlayer::isPlaying() const
{
    return is<Playing>(m_state);
}

bool RadioPlayer::isSounding() const
{
    const PlaybackState& state = m_state;
    return is<Connecting>(state) || is<Buffering>(state) || is<Playing>(state);
}

qsizetype RadioPlayer::queueSize() const
{
    return m_queue.value().size();
}

void RadioPlayer::setVolume(float volume)
{
    m_services.player.setVolume(volume);
}

void RadioPlayer::endAlarm(const QString& reason)
{
    AlarmSession* const alarms = m_services.alarms;
    if (alarms && !alarms->isStartingOwnAudio())
        alarms->endSession(reason);
}

void RadioPlayer::invalidateTimers()
{
    for (Task* const task : { &m_connectTask, &m_stallTask, &m_retryTask, &m_progressTask, &m_restoreTask })
        task->cancel();
}

void RadioPlayer::detachItemObservers()
{
    m_itemObservations.clear();
}

QString RadioPlayer::stationName() const
{
    const std::optional<Station> current = m_station;
    return current ? current->name : QStringLiteral("-");
}

// The guard is for work that outlives its handle: some of it is kept by nobody.
Task RadioPlayer::later(std::chrono::nanoseconds delay, std::function<void()> wake)
{
    return m_services.clock.after(delay, [self = QPointer(this), wake = std::move(wake)] {
        if (self)
            wake();
    });
}

Task RadioPlayer::laterInSession(std::chrono::nanoseconds delay, std::function<void()> wake)
{
    return later(delay, [this, generation = m_generation, wake = std::move(wake)] {
        if (m_generation == generation)
            wake();
    });
}

Task RadioPlayer::laterWhileWanted(std::chrono::nanoseconds delay, std::function<void()> wake)
{
    return laterInSession(delay, [this, wake = std::move(wake)] {
        if (m_wantsAudio)
            wake();
    });
}

}
