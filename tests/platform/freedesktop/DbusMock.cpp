// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/DbusMock.h"

namespace velarin::test {

namespace {

// The interpreter that Debian's modules belong to.
const QString python = QStringLiteral("/usr/bin/python3");

QProcessEnvironment environmentOf(const PrivateBus& bus)
{
    QProcessEnvironment environment = bus.environment();
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), bus.address());
    return environment;
}

}

DbusMock::DbusMock(PrivateBus& bus, const QString& templateName)
    : DbusMock(bus, QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
          QStringLiteral("org.freedesktop.login1.Manager"),
          { QStringLiteral("--system"), QStringLiteral("--template"), templateName })
{
}

DbusMock::DbusMock(PrivateBus& bus, const QString& name, const QString& path, const QString& interface)
    : DbusMock(bus, name, path, interface, { QStringLiteral("--session"), name, path, interface })
{
}

DbusMock::DbusMock(PrivateBus& bus, QString name, QString path, QString interface, const QStringList& arguments)
    : m_bus(bus.connect())
    , m_name(std::move(name))
    , m_path(std::move(path))
    , m_interface(std::move(interface))
    , m_process(python, QStringList{ QStringLiteral("-m"), QStringLiteral("dbusmock") } + arguments, environmentOf(bus))
{
}

bool DbusMock::isReady()
{
    return waitForName(m_bus, m_name);
}

QDBusMessage DbusMock::call(const QString& method) const
{
    return QDBusMessage::createMethodCall(m_name, m_path, QStringLiteral("org.freedesktop.DBus.Mock"), method);
}

void DbusMock::addMethod(
    const QString& method, const QString& inSignature, const QString& outSignature, const QString& body)
{
    auto add = call(QStringLiteral("AddMethod"));
    add << m_interface << method << inSignature << outSignature << body;
    m_bus.call(add);
}

void DbusMock::emitSignal(const QString& name, const QString& signature, const QVariantList& arguments)
{
    auto emitCall = call(QStringLiteral("EmitSignal"));
    emitCall << m_interface << name << signature << QVariant(arguments);
    m_bus.call(emitCall);
}

}
