// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/AppearanceJudgement.h"

namespace velarin {

namespace {

constexpr std::uint32_t preferDark = 1;
constexpr std::uint32_t preferLight = 2;
constexpr std::uint32_t higherContrast = 1;

}

ColorScheme schemeOf(const QPalette& palette)
{
    const int window = palette.color(QPalette::Window).lightness();
    const int text = palette.color(QPalette::WindowText).lightness();
    return text > window ? ColorScheme::Dark : ColorScheme::Light;
}

Appearance::Wishes judgeAppearance(const PortalSettings& settings, const QPalette& palette)
{
    Appearance::Wishes wishes;
    if (settings.colorScheme == preferDark)
        wishes.scheme = ColorScheme::Dark;
    else if (settings.colorScheme == preferLight)
        wishes.scheme = ColorScheme::Light;
    else
        wishes.scheme = schemeOf(palette);
    wishes.reducedMotion = settings.animations == false;
    wishes.highContrast = settings.contrast == higherContrast;
    return wishes;
}

}
