// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <optional>

namespace velarin {

// The user's settings: typed values under text keys. Main thread only. Reading never blocks; a change is handed to the
// disk at once and is there within 100 ms.
//
// A value of another type than the one asked for reads as absent, so the caller's default applies. Booleans, numbers,
// strings and lists of strings stand as JSON has them; a whole number reads as an integer and as a real number; a date
// is {"date": seconds since 2001-01-01 00:00:00 UTC}, bytes are {"data": base64}.
class Defaults
{
public:
    virtual ~Defaults() = default;

    // Undefined where nothing is stored.
    [[nodiscard]] virtual QJsonValue value(const QString& key) const = 0;
    virtual void setValue(const QString& key, const QJsonValue& value) = 0;
    virtual void remove(const QString& key) = 0;

    [[nodiscard]] bool contains(const QString& key) const;
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const;
    [[nodiscard]] std::optional<qint64> integer(const QString& key) const;
    [[nodiscard]] std::optional<double> real(const QString& key) const;
    [[nodiscard]] std::optional<QString> string(const QString& key) const;
    // Absent if one element is no string.
    [[nodiscard]] std::optional<QStringList> strings(const QString& key) const;
    [[nodiscard]] std::optional<QDateTime> date(const QString& key) const;
    [[nodiscard]] std::optional<QByteArray> bytes(const QString& key) const;

    void setBoolean(const QString& key, bool value);
    void setInteger(const QString& key, qint64 value);
    void setReal(const QString& key, double value);
    void setString(const QString& key, const QString& value);
    void setStrings(const QString& key, const QStringList& value);
    void setDate(const QString& key, const QDateTime& value);
    void setBytes(const QString& key, const QByteArray& value);
};

}
