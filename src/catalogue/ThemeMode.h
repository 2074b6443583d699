// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>

namespace velarin {

enum class ThemeMode
{
    system,
    light,
    dark,
};

// In the order of the picker.
inline constexpr std::array allThemeModes{ ThemeMode::system, ThemeMode::light, ThemeMode::dark };

// The stored text: "system", "light", "dark".
[[nodiscard]] QString toText(ThemeMode mode);
// Unknown text reads as `system`.
[[nodiscard]] ThemeMode themeModeFromText(const QString& text);

}
