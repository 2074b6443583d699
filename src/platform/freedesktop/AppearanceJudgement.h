// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Appearance.h"

#include <QPalette>

#include <cstdint>
#include <optional>

namespace velarin {

// What the desktop's settings portal said, each absent until it did.
struct PortalSettings
{
    // org.freedesktop.appearance color-scheme: 0 no preference, 1 dark, 2 light; others count as 0.
    std::optional<std::uint32_t> colorScheme;
    // org.freedesktop.appearance contrast: 1 higher contrast.
    std::optional<std::uint32_t> contrast;
    // org.gnome.desktop.interface enable-animations.
    std::optional<bool> animations;
    bool operator==(const PortalSettings&) const = default;
};

// Dark if its text is lighter than its windows.
[[nodiscard]] ColorScheme schemeOf(const QPalette& palette);

// The portal's word where it has one, else the palette's; what neither says is not wished.
[[nodiscard]] Appearance::Wishes judgeAppearance(const PortalSettings& settings, const QPalette& palette);

}
