// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>

#include <optional>

namespace velarin {

// Stored dates are seconds since 2001-01-01 00:00:00 UTC, kept to the millisecond.
[[nodiscard]] double toReferenceSeconds(const QDateTime& date);
// In UTC. Absent where the number lies more than 30,000 years off, which no clock has ever written.
[[nodiscard]] std::optional<QDateTime> fromReferenceSeconds(double seconds);

}
