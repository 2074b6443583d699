// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Defaults.h"

#include "base/ReferenceDate.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cmath>
#include <limits>

namespace velarin {

namespace {

const QString dateKey = QStringLiteral("date");
const QString dataKey = QStringLiteral("data");

std::optional<QJsonValue> onlyMember(const QJsonValue& value, const QString& key)
{
    const QJsonObject object = value.toObject();
    if (object.size() != 1 || !object.contains(key))
        return std::nullopt;
    return object.value(key);
}

}

bool Defaults::contains(const QString& key) const
{
    return !value(key).isUndefined();
}

std::optional<bool> Defaults::boolean(const QString& key) const
{
    const QJsonValue stored = value(key);
    return stored.isBool() ? std::optional(stored.toBool()) : std::nullopt;
}

std::optional<qint64> Defaults::integer(const QString& key) const
{
    const QJsonValue stored = value(key);
    if (!stored.isDouble())
        return std::nullopt;
    // Beyond 2^53 a stored real number says nothing about its last digits, and beyond 2^63 the conversion is undefined.
    const double number = stored.toDouble();
    if (std::abs(number) < 9.0e15 && number != std::floor(number))
        return std::nullopt;
    if (number >= 9.2e18 || number <= -9.2e18)
        return std::nullopt;
    return stored.toInteger(static_cast<qint64>(number));
}

std::optional<double> Defaults::real(const QString& key) const
{
    const QJsonValue stored = value(key);
    return stored.isDouble() ? std::optional(stored.toDouble()) : std::nullopt;
}

std::optional<QString> Defaults::string(const QString& key) const
{
    const QJsonValue stored = value(key);
    return stored.isString() ? std::optional(stored.toString()) : std::nullopt;
}

std::optional<QStringList> Defaults::strings(const QString& key) const
{
    const QJsonValue stored = value(key);
    if (!stored.isArray())
        return std::nullopt;
    QStringList result;
    const QJsonArray array = stored.toArray();
    for (const QJsonValue element : array) {
        if (!element.isString())
            return std::nullopt;
        result.append(element.toString());
    }
    return result;
}

std::optional<QDateTime> Defaults::date(const QString& key) const
{
    const auto seconds = onlyMember(value(key), dateKey);
    if (!seconds || !seconds->isDouble())
        return std::nullopt;
    return fromReferenceSeconds(seconds->toDouble());
}

std::optional<QByteArray> Defaults::bytes(const QString& key) const
{
    const auto text = onlyMember(value(key), dataKey);
    if (!text || !text->isString())
        return std::nullopt;
    const auto decoded =
        QByteArray::fromBase64Encoding(text->toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional(*decoded) : std::nullopt;
}

void Defaults::setBoolean(const QString& key, bool value)
{
    setValue(key, value);
}

void Defaults::setInteger(const QString& key, qint64 value)
{
    setValue(key, value);
}

void Defaults::setReal(const QString& key, double value)
{
    setValue(key, value);
}

void Defaults::setString(const QString& key, const QString& value)
{
    setValue(key, value);
}

void Defaults::setStrings(const QString& key, const QStringList& value)
{
    setValue(key, QJsonArray::fromStringList(value));
}

void Defaults::setDate(const QString& key, const QDateTime& value)
{
    setValue(key, QJsonObject{ { dateKey, toReferenceSeconds(value) } });
}

void Defaults::setBytes(const QString& key, const QByteArray& value)
{
    setValue(key, QJsonObject{ { dataKey, QString::fromLatin1(value.toBase64()) } });
}

}
