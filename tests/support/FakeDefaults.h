// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Defaults.h"

#include <QJsonObject>

namespace velarin::test {

// Settings in memory. `writes` counts every store, so that a test can tell a silent store from none.
class FakeDefaults final : public Defaults
{
public:
    QJsonValue value(const QString& key) const override;
    void setValue(const QString& key, const QJsonValue& value) override;
    void remove(const QString& key) override;

    QJsonObject stored;
    QList<QString> writes;
};

}
