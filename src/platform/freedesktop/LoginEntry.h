// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/LoginItem.h"

#include <QByteArray>
#include <QStringList>

namespace velarin {

// The command as the key Exec of a desktop entry holds it: each argument quoted if it needs it, "%" doubled, and the
// whole escaped once more as any value of the type string (Desktop Entry Specification, "The Exec key").
[[nodiscard]] QString execValue(const QStringList& command);

// The desktop entry that starts `command` at login.
[[nodiscard]] QByteArray loginEntry(const QStringList& command);

// What the entry that is there means for a program that is started by `command`. Every readable entry is registered;
// it is enabled if it starts that command and is neither hidden nor switched off.
[[nodiscard]] LoginItem::Status judgeLoginEntry(const QByteArray& entry, const QStringList& command);

}
