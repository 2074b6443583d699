// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/ThemeMode.h"
#include "platform/Appearance.h"

#include <QObject>
#include <QProperty>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace velarin {

class StationRepository;

// Which scheme a choice of the user and the wish of the desktop give.
[[nodiscard]] ColorScheme effectiveScheme(ThemeMode mode, ColorScheme desktop);

// How the screens shall look: what the user chose, else what the desktop wishes.
class AppearanceModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(bool dark READ isDark NOTIFY darkChanged BINDABLE bindableDark)
    Q_PROPERTY(bool reducedMotion READ hasReducedMotion NOTIFY reducedMotionChanged BINDABLE bindableReducedMotion)
    Q_PROPERTY(bool highContrast READ hasHighContrast NOTIFY highContrastChanged BINDABLE bindableHighContrast)

public:
    AppearanceModel(StationRepository& repository, Appearance& desktop);

    // Asks the desktop, once. `ready` is called when its first answer is there.
    void start(std::function<void()> ready);

    [[nodiscard]] bool isDark() const { return m_dark; }
    [[nodiscard]] QBindable<bool> bindableDark() { return &m_dark; }
    [[nodiscard]] bool hasReducedMotion() const { return m_reducedMotion; }
    [[nodiscard]] QBindable<bool> bindableReducedMotion() { return &m_reducedMotion; }
    [[nodiscard]] bool hasHighContrast() const { return m_highContrast; }
    [[nodiscard]] QBindable<bool> bindableHighContrast() { return &m_highContrast; }

Q_SIGNALS:
    void darkChanged();
    void reducedMotionChanged();
    void highContrastChanged();

private:
    void obey(const Appearance::Wishes& wishes);
    void chooseScheme();

    StationRepository& m_repository;
    Appearance& m_desktop;
    ColorScheme m_wished{ ColorScheme::Dark };
    std::function<void()> m_ready;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppearanceModel, bool, m_dark, true, &AppearanceModel::darkChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(
        AppearanceModel, bool, m_reducedMotion, false, &AppearanceModel::reducedMotionChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(
        AppearanceModel, bool, m_highContrast, false, &AppearanceModel::highContrastChanged)
};

}
