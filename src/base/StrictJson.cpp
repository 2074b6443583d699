// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/StrictJson.h"

#include <QJsonDocument>

namespace velarin {

StrictJson::StrictJson(const QJsonValue& value)
    : m_object(value.toObject())
    , m_valid(value.isObject())
{
}

QJsonValue StrictJson::field(const QString& key) const
{
    const QJsonValue value = m_object.value(key);
    return value.isNull() ? QJsonValue(QJsonValue::Undefined) : value;
}

QString StrictJson::requiredText(const QString& key)
{
    const QJsonValue value = field(key);
    m_valid = m_valid && value.isString();
    return value.toString();
}

double StrictJson::requiredNumber(const QString& key)
{
    const QJsonValue value = field(key);
    m_valid = m_valid && value.isDouble();
    return value.toDouble();
}

std::optional<QString> StrictJson::text(const QString& key)
{
    const QJsonValue value = field(key);
    if (value.isUndefined())
        return std::nullopt;
    m_valid = m_valid && value.isString();
    return value.toString();
}

std::optional<qint64> StrictJson::integer(const QString& key)
{
    const QJsonValue value = field(key);
    if (value.isUndefined())
        return std::nullopt;
    // toInteger() answers with its argument for whatever is no whole number of 64 bits.
    m_valid = m_valid && value.toInteger(0) == value.toInteger(1);
    return value.toInteger();
}

std::optional<bool> StrictJson::boolean(const QString& key)
{
    const QJsonValue value = field(key);
    if (value.isUndefined())
        return std::nullopt;
    m_valid = m_valid && value.isBool();
    return value.toBool();
}

std::optional<QJsonArray> jsonArray(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isArray())
        return std::nullopt;
    return document.array();
}

}
