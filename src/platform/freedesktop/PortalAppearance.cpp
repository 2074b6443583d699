// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/PortalAppearance.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>

#include <array>
#include <chrono>

namespace velarin {

namespace {

using namespace std::chrono_literals;

constexpr auto longestWait = 250ms;

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString gnomeSpace = QStringLiteral("org.gnome.desktop.interface");
const QString schemeKey = QStringLiteral("color-scheme");
const QString contrastKey = QStringLiteral("contrast");
const QString animationsKey = QStringLiteral("enable-animations");

QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

template<typename Value>
std::optional<Value> valueOf(const QVariant& value)
{
    return value.metaType() == QMetaType::fromType<Value>() ? std::optional(value.value<Value>()) : std::nullopt;
}

}

PortalAppearance::PortalAppearance(const QDBusConnection& sessionBus, std::function<QPalette()> palette)
    : m_bus(sessionBus)
    , m_palette(std::move(palette))
{
}

void PortalAppearance::start(std::function<void(const Wishes&)> changed)
{
    m_changed = std::move(changed);
    if (!m_bus.isConnected()) {
        QMetaObject::invokeMethod(
            this, [this] { tell(); }, Qt::QueuedConnection);
        return;
    }
    // connect() looks the types of the slot up by name, which QtDBus registers only when it first meets them.
    qRegisterMetaType<QDBusVariant>();
    m_bus.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
        SLOT(settingChanged(QString, QString, QDBusVariant)));
    m_unanswered = 3;
    ask(appearanceSpace, schemeKey, Method::ReadOne);
    ask(appearanceSpace, contrastKey, Method::ReadOne);
    ask(gnomeSpace, animationsKey, Method::ReadOne);
    QTimer::singleShot(longestWait, this, [this] {
        if (!m_told)
            tell();
    });
}

void PortalAppearance::ask(const QString& space, const QString& key, Method method)
{
    const QString name = method == Method::ReadOne ? QStringLiteral("ReadOne") : QStringLiteral("Read");
    auto call = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, name);
    call << space << key;
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, space, key, method] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.error().type() == QDBusError::UnknownMethod && method == Method::ReadOne) {
            ask(space, key, Method::Read);
            return;
        }
        if (!reply.isError())
            take(space, key, reply.value().variant());
        answered();
    });
}

void PortalAppearance::answered()
{
    --m_unanswered;
    if (m_unanswered == 0 || m_told)
        tell();
}

void PortalAppearance::settingChanged(const QString& space, const QString& key, const QDBusVariant& value)
{
    take(space, key, value.variant());
    if (m_told)
        tell();
}

void PortalAppearance::take(const QString& space, const QString& key, const QVariant& wrapped)
{
    const QVariant value = unwrapped(wrapped);
    if (space == appearanceSpace && key == schemeKey)
        m_settings.colorScheme = valueOf<std::uint32_t>(value);
    else if (space == appearanceSpace && key == contrastKey)
        m_settings.contrast = valueOf<std::uint32_t>(value);
    else if (space == gnomeSpace && key == animationsKey)
        m_settings.animations = valueOf<bool>(value);
}

void PortalAppearance::tell()
{
    const Wishes wishes = judgeAppearance(m_settings, m_palette());
    if (m_told == wishes)
        return;
    m_told = wishes;
    m_changed(wishes);
}

}
