// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/RadioPlayer.h"

#include "catalogue/StationRepository.h"
#include "diagnostics/Diagnostics.h"
#include "radio/FailureKind.h"
#include "radio/FailureMessages.h"
#include "radio/RadioLog.h"
#include "radio/ReconnectPolicy.h"
#include "radio/Watchdogs.h"

namespace velarin {

void RadioPlayer::handleFailure(PlaybackFailure::Kind hint, const AudioErrorChain& error)
{
    if (!m_wantsAudio || !station())
        return;
    // Detaching lets go of the handler that may have brought the error here.
    const AudioErrorChain cause = error;
    invalidateTimers();
    detachItemObservers();
    m_services.player.pause();
    m_services.player.replaceCurrentItem(std::nullopt);
    ++m_failures;
    const PlaybackFailure::Kind kind = classifyFailure(cause, hint, m_isOnline);
    if (isTransient(kind))
        lowerQuality();
    m_services.diagnostics.append(DiagnosticCategory::network,
        QStringLiteral("Tentativo %1 fallito (%2)").arg(QString::number(m_failures), toText(kind)));
    qCInfo(radioLog, "failure #%lld %s hint=%s error=%s", m_failures, qUtf8Printable(toText(kind)),
        qUtf8Printable(toText(hint)), qUtf8Printable(describe(cause)));
    carryOut(planFailure(failureFacts(kind)), kind);
}

void RadioPlayer::giveUp(PlaybackFailure::Kind kind)
{
    carryOut(planGiveUp(failureFacts(kind)), kind);
}

FailureFacts RadioPlayer::failureFacts(PlaybackFailure::Kind kind) const
{
    FailureFacts facts;
    facts.kind = kind;
    facts.failures = m_failures;
    facts.patientRetries = m_patientRetries;
    facts.autoReconnect = m_services.repository.autoReconnect();
    facts.autoSkipUnreachable = m_services.repository.autoSkipUnreachable();
    facts.hasAlternateStream = station()->alternateStreamURL().has_value();
    facts.usingAlternateStream = m_usingAlternateStream;
    facts.hasAudioSinceConnect = m_hasAudioSinceConnect;
    facts.queueCount = queueSize();
    facts.skipsInARow = m_skipsInARow;
    return facts;
}

void RadioPlayer::carryOut(const FailurePlan& plan, PlaybackFailure::Kind kind)
{
    std::visit([this, kind](const auto& wayOut) { carryOut(wayOut, kind); }, plan);
}

// Below, a timer is armed before the state is told: whoever hears of it may choose another station, which ends the
// timer.

void RadioPlayer::carryOut(const WaitForNetwork& wait, PlaybackFailure::Kind kind)
{
    m_resumeWhenOnline = wait.resumeWhenOnline;
    setState(Failed{ { kind, FailureMessages::offline() } });
}

void RadioPlayer::carryOut(const SwitchToAlternate&, PlaybackFailure::Kind)
{
    m_usingAlternateStream = true;
    m_failures = 0;
    retryAfter(ReconnectPolicy::alternateDelay, 1);
    setState(Connecting{ 1, ReconnectPolicy::maxAttempts(m_services.repository.autoReconnect()) });
}

void RadioPlayer::carryOut(const SkipToNext&, PlaybackFailure::Kind)
{
    skipUnreachable();
}

void RadioPlayer::carryOut(const RetrySoon& retry, PlaybackFailure::Kind)
{
    retryAfter(retry.delay, retry.attempt);
    setState(Connecting{ retry.attempt, retry.maxAttempts });
}

void RadioPlayer::carryOut(const RetryPatiently& retry, PlaybackFailure::Kind kind)
{
    endRun(kind);
    m_resumeWhenOnline = true;
    ++m_patientRetries;
    lowerQuality();
    armPatientRetry(retry.delay);
    setState(Failed{ { kind, FailureMessages::retriesPatiently(stationName(), retry.delay) } });
    m_services.diagnostics.append(
        DiagnosticCategory::network, QStringLiteral("Nuovo tentativo tra %1 secondi (%2)")
                                         .arg(QString::number(retry.delay.count()), m_quality.label()));
}

void RadioPlayer::carryOut(const StopForGood&, PlaybackFailure::Kind kind)
{
    const QString message = endRun(kind);
    setState(Failed{ { kind, message } });
}

QString RadioPlayer::endRun(PlaybackFailure::Kind kind)
{
    invalidateTimers();
    detachItemObservers();
    m_services.player.replaceCurrentItem(std::nullopt);
    m_wantsAudio = false;
    m_resumeWhenOnline = false;
    const QString message = FailureMessages::gaveUp(
        kind, stationName(), Watchdogs::answerSeconds(m_services.repository.connectTimeoutSeconds()));
    qCInfo(radioLog, "giving up on %s: %s", qUtf8Printable(stationName()), qUtf8Printable(message));
    m_services.diagnostics.append(DiagnosticCategory::error, message);
    return message;
}

void RadioPlayer::retryAfter(std::chrono::nanoseconds delay, qint64 attempt)
{
    m_retryTask = laterWhileWanted(delay, [this, attempt] { connectStream(attempt); });
}

void RadioPlayer::armPatientRetry(std::chrono::seconds delay)
{
    m_retryTask = laterInSession(delay, [this] {
        if (m_wantsAudio || !is<Failed>(m_state))
            return;
        m_wantsAudio = true;
        m_failures = 0;
        connectStream(1);
    });
}

void RadioPlayer::skipUnreachable()
{
    ++m_skipsInARow;
    const Station failed = *station();
    qCInfo(radioLog, "auto-skip: %s did not connect, moving on", qUtf8Printable(failed.name));
    m_services.diagnostics.append(
        DiagnosticCategory::playback, QStringLiteral("%1 non si connette: passo alla successiva").arg(failed.name));
    const Station next = queue().at((m_queueIndex + 1) % queueSize());
    // Nobody keeps this task: a pause does not stop the move to the next station, only another choice does.
    later(ReconnectPolicy::skipDelay, [this, failedId = failed.id, next] {
        if (station() && station()->id == failedId)
            play(next, queue(), true);
    }).release();
}

}
