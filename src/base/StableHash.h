// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

namespace velarin {

// Signed 32-bit hash over the UTF-16 units of a text: h = 31 h + unit, wrapping. Ids, monogram colours and file names
// of covers are made of it and stored, so it never changes. The empty text gives 0.
[[nodiscard]] qint32 javaHashCode(QStringView text);

}
