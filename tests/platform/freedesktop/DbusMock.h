// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/freedesktop/PrivateBus.h"

namespace velarin::test {

// A service of the desktop as python3-dbusmock plays it, on a private bus that serves as session and system bus.
class DbusMock
{
public:
    // One of the package's templates ("logind").
    DbusMock(PrivateBus& bus, const QString& templateName);
    // An object without methods yet, on the session bus.
    DbusMock(PrivateBus& bus, const QString& name, const QString& path, const QString& interface);

    [[nodiscard]] bool isReady();
    // The body is Python; the arguments are in `args`, the answer goes to `ret`.
    void addMethod(const QString& method, const QString& inSignature, const QString& outSignature, const QString& body);
    void emitSignal(const QString& name, const QString& signature, const QVariantList& arguments);

private:
    DbusMock(PrivateBus& bus, QString name, QString path, QString interface, const QStringList& arguments);
    [[nodiscard]] QDBusMessage call(const QString& method) const;

    QDBusConnection m_bus;
    QString m_name;
    QString m_path;
    QString m_interface;
    Child m_process;
};

}
