// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Appearance.h"
#include "platform/freedesktop/AppearanceJudgement.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>

namespace velarin {

// The wishes of the desktop as the portal org.freedesktop.portal.Settings tells them. Main thread only.
//
// start() asks for the three settings at once and waits for none of them. `changed` is called when all have been
// answered, or after 250 ms with what is known by then; an answer that comes later counts as a change. A portal that
// only starts to run afterwards is heard through its SettingChanged.
class PortalAppearance final : public QObject, public Appearance
{
    Q_OBJECT

public:
    // `palette`: the application's own, read whenever the portal leaves the scheme open.
    PortalAppearance(const QDBusConnection& sessionBus, std::function<QPalette()> palette);

    void start(std::function<void(const Wishes&)> changed) override;

private Q_SLOTS:
    void settingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    // Older portals know Read, whose answer is wrapped twice, but not ReadOne.
    enum class Method
    {
        ReadOne,
        Read,
    };

    void ask(const QString& space, const QString& key, Method method);
    void answered();
    void take(const QString& space, const QString& key, const QVariant& value);
    void tell();

    QDBusConnection m_bus;
    std::function<QPalette()> m_palette;
    std::function<void(const Wishes&)> m_changed;
    PortalSettings m_settings;
    int m_unanswered{ 0 };
    // Absent until the first wishes were told.
    std::optional<Wishes> m_told;
};

}
