// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/ThemeMode.h"

namespace velarin {

QString toText(ThemeMode mode)
{
    switch (mode) {
    case ThemeMode::system:
        return QStringLiteral("system");
    case ThemeMode::light:
        return QStringLiteral("light");
    case ThemeMode::dark:
        return QStringLiteral("dark");
    }
    Q_UNREACHABLE();
}

ThemeMode themeModeFromText(const QString& text)
{
    for (const ThemeMode mode : allThemeModes) {
        if (toText(mode) == text)
            return mode;
    }
    return ThemeMode::system;
}

}
