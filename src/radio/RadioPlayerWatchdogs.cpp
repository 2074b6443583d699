// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/RadioPlayer.h"

#include "diagnostics/Diagnostics.h"
#include "radio/RadioLog.h"
#include "radio/Watchdogs.h"

#include <chrono>

namespace velarin {

void RadioPlayer::timeControlChanged(TimeControl control)
{
    if (control == TimeControl::Paused)
        m_sleepDelay.reset();
    if (!m_wantsAudio)
        return;
    switch (control) {
    case TimeControl::Playing:
        soundStarted();
        break;
    case TimeControl::Waiting:
        soundRanDry();
        break;
    case TimeControl::Paused:
        soundStoppedByItself();
        break;
    }
}

void RadioPlayer::soundStarted()
{
    m_hasAudioSinceConnect = true;
    m_failures = 0;
    m_patientRetries = 0;
    m_connectTask.cancel();
    m_stallTask.cancel();
    armProgressWatchdog();
    armQualityRestore();
    if (is<Playing>(m_state))
        return;
    qCInfo(radioLog, "playing %s", qUtf8Printable(stationName()));
    m_skipsInARow = 0;
    m_services.diagnostics.append(DiagnosticCategory::playback, QStringLiteral("In onda: %1").arg(stationName()));
    setState(Playing{});
}

// Before the first sound only the connect timeout counts.
void RadioPlayer::soundRanDry()
{
    if (!m_hasAudioSinceConnect)
        return;
    armStallWatchdog();
    if (is<Buffering>(m_state))
        return;
    m_services.diagnostics.append(DiagnosticCategory::network,
        QStringLiteral("Buffer vuoto su %1: attendo (%2)").arg(stationName(), m_quality.label()));
    // A line that ran dry has not been steady.
    m_restoreTask.cancel();
    // The now-playing display keeps saying that the radio plays: a moment's dryness is no news for it.
    m_state = Buffering{};
    announce();
}

void RadioPlayer::soundStoppedByItself()
{
    if (!m_hasAudioSinceConnect || !(is<Playing>(m_state) || is<Buffering>(m_state)))
        return;
    m_services.diagnostics.append(
        DiagnosticCategory::network, QStringLiteral("Audio fermo senza errore su %1: riconnetto").arg(stationName()));
    armStallWatchdog(Watchdogs::silentPauseLimit);
}

void RadioPlayer::armStallWatchdog(std::optional<std::chrono::nanoseconds> after)
{
    m_stallTask = laterWhileWanted(after.value_or(answerTimeout()), [this] {
        if (m_services.player.timeControl() != TimeControl::Playing)
            handleFailure(PlaybackFailure::Kind::timeout, {});
    });
}

void RadioPlayer::armProgressWatchdog()
{
    m_lastProgress = m_services.player.currentTime();
    scheduleProgressCheck();
}

void RadioPlayer::scheduleProgressCheck()
{
    m_progressTask = laterWhileWanted(Watchdogs::progressPeriod, [this] { checkProgress(); });
}

// Ends where the radio does not claim to play; the next report of playing arms it again.
void RadioPlayer::checkProgress()
{
    if (!is<Playing>(m_state))
        return;
    const double now = m_services.player.currentTime();
    const double moved = now - m_lastProgress;
    m_lastProgress = now;
    if (!Watchdogs::hasStoppedSilently(m_services.player.timeControl(), moved)) {
        scheduleProgressCheck();
        return;
    }
    qCInfo(radioLog, "silent stop: clock moved %fs in %fs", moved,
        std::chrono::duration<double>(Watchdogs::progressPeriod).count());
    m_services.diagnostics.append(DiagnosticCategory::network,
        QStringLiteral("Nessun audio da 5 secondi mentre la radio risultava in diretta: riconnetto"));
    handleFailure(PlaybackFailure::Kind::timeout, {});
}

}
