// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/ReferenceDate.h"

#include <cmath>

namespace velarin {

namespace {

// 2001-01-01 00:00:00 UTC in milliseconds since 1970.
constexpr qint64 referenceMilliseconds = 978'307'200'000;
constexpr double greatestSeconds = 1.0e12;

}

double toReferenceSeconds(const QDateTime& date)
{
    return static_cast<double>(date.toMSecsSinceEpoch() - referenceMilliseconds) / 1000.0;
}

std::optional<QDateTime> fromReferenceSeconds(double seconds)
{
    // Written so that a NaN fails too.
    if (!(std::abs(seconds) <= greatestSeconds))
        return std::nullopt;
    const auto milliseconds = static_cast<qint64>(std::llround(seconds * 1000.0));
    return QDateTime::fromMSecsSinceEpoch(referenceMilliseconds + milliseconds, Qt::UTC);
}

}
