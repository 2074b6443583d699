// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/freedesktop/SingleInstance.h"

#include <QDBusAbstractAdaptor>
#include <QVariantMap>

namespace velarin {

// org.freedesktop.Application, as a launcher or a second start calls it.
class ApplicationAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    ApplicationAdaptor(SingleInstance::Handlers handlers, QObject* parent);

public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    // The program has no actions of its own: it comes forward, as for Activate.
    void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private:
    SingleInstance::Handlers m_handlers;
};

// What a second start says about itself.
[[nodiscard]] QVariantMap platformData(const QString& token);
// The token of a caller; both spellings are in use.
[[nodiscard]] QString tokenOf(const QVariantMap& platformData);

}
