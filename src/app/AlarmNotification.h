// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace velarin {

// The alarm of a notification called "alarm-{alarm id}-{suffix}"; an alarm id may hold hyphens itself. Absent for any
// other identifier.
[[nodiscard]] std::optional<QString> alarmIdOfNotification(const QString& identifier);

}
