// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/QtNetworkMonitor.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <utility>

namespace velarin {

namespace {

const QString service = QStringLiteral("org.freedesktop.NetworkManager");
const QString path = QStringLiteral("/org/freedesktop/NetworkManager");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString stateProperty = QStringLiteral("State");

constexpr int answerMilliseconds = 2000;

// NMState, of NetworkManager's D-Bus types. Asleep is no verdict: networking is switched off there, and a cable that
// another service looks after may still work.
constexpr uint disconnected = 20;
constexpr uint disconnecting = 30;

}

QtNetworkMonitor::QtNetworkMonitor(QDBusConnection systemBus)
    : m_bus(std::move(systemBus))
{
}

void QtNetworkMonitor::start(std::function<void(bool online)> changed)
{
    m_changed = std::move(changed);
    if (!m_bus.isConnected()) {
        QMetaObject::invokeMethod(
            this, [this] { publish(true); }, Qt::QueuedConnection);
        return;
    }
    auto* watcher = new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& newOwner) { onOwnerChanged(newOwner); });
    m_bus.connect(service, path, properties, QStringLiteral("PropertiesChanged"), this,
        SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
    ask();
}

void QtNetworkMonitor::ask()
{
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, properties, QStringLiteral("Get"));
    question.setArguments({ service, stateProperty });
    question.setAutoStartService(false);
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question, answerMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, number = ++m_question] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> answer = *watcher;
        if (number != m_question)
            return;
        if (answer.isError())
            publish(true);
        else
            judge(answer.value().variant().toUInt());
    });
}

void QtNetworkMonitor::judge(uint state)
{
    publish(state != disconnected && state != disconnecting);
}

void QtNetworkMonitor::publish(bool online)
{
    if (m_online == online)
        return;
    m_online = online;
    m_changed(online);
}

void QtNetworkMonitor::onOwnerChanged(const QString& newOwner)
{
    ++m_question;
    if (newOwner.isEmpty())
        publish(true);
    else
        ask();
}

void QtNetworkMonitor::onPropertiesChanged(
    const QString& interface, const QVariantMap& changed, const QStringList& invalidated)
{
    if (interface != service)
        return;
    if (changed.contains(stateProperty)) {
        ++m_question;
        judge(changed.value(stateProperty).toUInt());
    } else if (invalidated.contains(stateProperty)) {
        ask();
    }
}

}
