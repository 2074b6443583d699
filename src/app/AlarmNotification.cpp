// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AlarmNotification.h"

namespace velarin {

std::optional<QString> alarmIdOfNotification(const QString& identifier)
{
    const QString prefix = QStringLiteral("alarm-");
    if (!identifier.startsWith(prefix))
        return std::nullopt;
    const QString rest = identifier.mid(prefix.size());
    const qsizetype hyphen = rest.lastIndexOf(u'-');
    return hyphen < 0 ? std::nullopt : std::optional(rest.left(hyphen));
}

}
