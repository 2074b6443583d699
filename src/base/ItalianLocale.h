// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocale>
#include <QString>

namespace velarin {

// The locale of everything that a user reads: the system's if it is Italian, else it_IT.
[[nodiscard]] QLocale interfaceLocale();
[[nodiscard]] QLocale interfaceLocale(const QLocale& system);

// The Italian name of an ISO 3166 alpha-2 region as ICU has it ("Paesi Bassi"), or the empty text for an unknown code.
// Qt 6.4 has only the native and the English names.
[[nodiscard]] QString regionName(const QString& code);

}
