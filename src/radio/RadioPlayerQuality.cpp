// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/RadioPlayer.h"

#include "diagnostics/Diagnostics.h"
#include "radio/RadioLog.h"
#include "radio/Watchdogs.h"

namespace velarin {

void RadioPlayer::lowerQuality()
{
    if (m_quality.tier >= StreamQuality::lowestTier)
        return;
    ++m_quality.tier;
    m_restoreTask.cancel();
    qCInfo(radioLog, "quality down to tier %lld", m_quality.tier);
    m_services.diagnostics.append(DiagnosticCategory::playback,
        QStringLiteral("Linea debole: riduco a %1 per non interrompere l'audio").arg(m_quality.label()));
}

// A countdown that runs is never restarted.
void RadioPlayer::armQualityRestore()
{
    if (m_quality.tier < 1 || m_restoreTask)
        return;
    m_restoreTask = laterWhileWanted(Watchdogs::qualityRestoreDelay, [this] { restoreQuality(); });
}

// The stream that sounds stays as it is; the next connection asks for more.
void RadioPlayer::restoreQuality()
{
    if (!is<Playing>(m_state) || m_quality.tier < 1)
        return;
    --m_quality.tier;
    m_restoreTask.cancel();
    m_services.diagnostics.append(
        DiagnosticCategory::playback, QStringLiteral("Linea stabile da 10 minuti: torno a %1").arg(m_quality.label()));
    armQualityRestore();
}

}
