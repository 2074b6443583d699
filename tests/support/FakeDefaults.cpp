// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FakeDefaults.h"

namespace velarin::test {

QJsonValue FakeDefaults::value(const QString& key) const
{
    return stored.value(key);
}

void FakeDefaults::setValue(const QString& key, const QJsonValue& value)
{
    stored.insert(key, value);
    writes.append(key);
}

void FakeDefaults::remove(const QString& key)
{
    stored.remove(key);
    writes.append(key);
}

}
