// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/StreamQuality.h"

#include <algorithm>
#include <array>

namespace velarin {

namespace {

struct Rung
{
    QString label;
    qint64 peakBitRate;
    double forwardBufferDuration;
};

const Rung& rung(qint64 tier)
{
    static const std::array<Rung, 4> ladder{ {
        { QStringLiteral("qualità piena"), 0, 0.0 },
        { QStringLiteral("qualità alta"), 128'000, 12.0 },
        { QStringLiteral("qualità media"), 80'000, 24.0 },
        { QStringLiteral("qualità minima"), 48'000, 36.0 },
    } };
    return ladder[static_cast<std::size_t>(std::clamp<qint64>(tier, 0, StreamQuality::lowestTier))];
}

}

QString StreamQuality::label() const
{
    return rung(tier).label;
}

qint64 StreamQuality::preferredPeakBitRate() const
{
    return rung(tier).peakBitRate;
}

double StreamQuality::preferredForwardBufferDuration() const
{
    return rung(tier).forwardBufferDuration;
}

}
