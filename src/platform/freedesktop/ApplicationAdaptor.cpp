// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/ApplicationAdaptor.h"

namespace velarin {

namespace {

const QString activationToken = QStringLiteral("activation-token");
const QString startupId = QStringLiteral("desktop-startup-id");

}

QVariantMap platformData(const QString& token)
{
    return token.isEmpty() ? QVariantMap() : QVariantMap{ { activationToken, token }, { startupId, token } };
}

QString tokenOf(const QVariantMap& platformData)
{
    const QString token = platformData.value(activationToken).toString();
    return token.isEmpty() ? platformData.value(startupId).toString() : token;
}

ApplicationAdaptor::ApplicationAdaptor(SingleInstance::Handlers handlers, QObject* parent)
    : QDBusAbstractAdaptor(parent)
    , m_handlers(std::move(handlers))
{
}

void ApplicationAdaptor::Activate(const QVariantMap& platformData)
{
    if (m_handlers.activated)
        m_handlers.activated(tokenOf(platformData));
}

void ApplicationAdaptor::Open(const QStringList& uris, const QVariantMap& platformData)
{
    if (m_handlers.opened)
        m_handlers.opened(uris, tokenOf(platformData));
}

void ApplicationAdaptor::ActivateAction(
    const QString& /*name*/, const QVariantList& /*parameter*/, const QVariantMap& platformData)
{
    Activate(platformData);
}

}
