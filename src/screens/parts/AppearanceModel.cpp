// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/parts/AppearanceModel.h"

#include "catalogue/StationRepository.h"

#include <utility>

namespace velarin {

ColorScheme effectiveScheme(ThemeMode mode, ColorScheme desktop)
{
    switch (mode) {
    case ThemeMode::system:
        return desktop;
    case ThemeMode::light:
        return ColorScheme::Light;
    case ThemeMode::dark:
        return ColorScheme::Dark;
    }
    return desktop;
}

AppearanceModel::AppearanceModel(StationRepository& repository, Appearance& desktop)
    : m_repository(repository)
    , m_desktop(desktop)
{
    connect(&repository, &StationRepository::themeModeChanged, this, &AppearanceModel::chooseScheme);
    chooseScheme();
}

void AppearanceModel::start(std::function<void()> ready)
{
    m_ready = std::move(ready);
    m_desktop.start([this](const Appearance::Wishes& wishes) { obey(wishes); });
}

void AppearanceModel::obey(const Appearance::Wishes& wishes)
{
    m_wished = wishes.scheme;
    m_reducedMotion = wishes.reducedMotion;
    m_highContrast = wishes.highContrast;
    chooseScheme();
    if (const auto ready = std::exchange(m_ready, {}))
        ready();
}

void AppearanceModel::chooseScheme()
{
    m_dark = effectiveScheme(m_repository.themeMode(), m_wished) == ColorScheme::Dark;
}

}
