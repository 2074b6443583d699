// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/RadioPlayer.h"

#include "diagnostics/Diagnostics.h"
#include "platform/NetworkMonitor.h"
#include "radio/ReconnectPolicy.h"
#include "radio/Watchdogs.h"

#include <QPointer>

#include <utility>

namespace velarin {

void RadioPlayer::startNetworkMonitor()
{
    m_services.network.start([self = QPointer(this)](bool online) {
        if (self)
            self->networkChanged(online);
    });
}

// Going offline does nothing by itself: the stream fails when its reserve is gone, and the failure then knows why.
void RadioPlayer::networkChanged(bool online)
{
    const bool wasOnline = std::exchange(m_isOnline, online);
    if (wasOnline || !online)
        return;
    const std::optional<Station> current = m_station;
    if (m_resumeWhenOnline && current && is<Failed>(m_state)) {
        m_resumeWhenOnline = false;
        start(*current);
    } else if (m_wantsAudio && is<Connecting>(m_state)) {
        // An attempt under way keeps its timer and its observers until the next detach.
        m_failures = 0;
        m_retryTask.cancel();
        connectStream(1);
    }
}

void RadioPlayer::observeSystemSleep()
{
    SleepMonitor::Handlers handlers;
    handlers.willSleep = [self = QPointer(this)](SleepMonitor::SleepDelay delay) {
        if (self)
            self->systemWillSleep(std::move(delay));
    };
    handlers.didWake = [self = QPointer(this)] {
        if (self)
            self->systemDidWake();
    };
    m_services.sleep.start(std::move(handlers));
}

void RadioPlayer::systemWillSleep(SleepMonitor::SleepDelay delay)
{
    m_playingBeforeSleep = m_wantsAudio && isSounding();
    if (!m_playingBeforeSleep)
        return;
    // The machine waits until the player has reported that it is silent.
    m_sleepDelay = std::move(delay);
    m_sleepDelayLimit = later(Watchdogs::sleepDelayLimit, [this] { m_sleepDelay.reset(); });
    m_services.diagnostics.append(DiagnosticCategory::interruption, QStringLiteral("Il Mac va in stop: pausa"));
    pause();
}

void RadioPlayer::systemDidWake()
{
    if (!std::exchange(m_playingBeforeSleep, false))
        return;
    m_services.diagnostics.append(
        DiagnosticCategory::interruption, QStringLiteral("Il Mac si è risvegliato: riprendo"));
    later(ReconnectPolicy::wakeDelay, [this] { resume(); }).release();
}

}
