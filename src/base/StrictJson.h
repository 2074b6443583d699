// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>

#include <optional>

namespace velarin {

// Reads one record out of a JSON object, field by field. A field of the wrong type, or a required one that is not
// there, spoils the whole record: ask isValid() when everything was read. Until then the values may be anything. Null
// counts as absent; keys that nobody asks for are ignored.
class StrictJson
{
public:
    // A value that is no object makes a record that is not valid.
    explicit StrictJson(const QJsonValue& value);

    [[nodiscard]] QString requiredText(const QString& key);
    [[nodiscard]] double requiredNumber(const QString& key);
    [[nodiscard]] std::optional<QString> text(const QString& key);
    // A signed 64-bit whole number, exact; 2.0 is one, 2.5 and 1e19 are not.
    [[nodiscard]] std::optional<qint64> integer(const QString& key);
    [[nodiscard]] std::optional<bool> boolean(const QString& key);

    [[nodiscard]] bool isValid() const { return m_valid; }
    // For a value that has the right type and makes no sense.
    void spoil() { m_valid = false; }

private:
    // Undefined where the field is absent.
    [[nodiscard]] QJsonValue field(const QString& key) const;

    QJsonObject m_object;
    bool m_valid{ true };
};

// A file that is an array of records: as a whole or not at all. `decode` makes an optional record of one element.
[[nodiscard]] std::optional<QJsonArray> jsonArray(const QByteArray& json);

template<typename Record, typename Decode>
[[nodiscard]] std::optional<QList<Record>> decodeJsonArray(const QByteArray& json, Decode decode)
{
    const auto array = jsonArray(json);
    if (!array)
        return std::nullopt;
    QList<Record> records;
    records.reserve(array->size());
    for (const QJsonValue element : *array) {
        std::optional<Record> record = decode(element);
        if (!record)
            return std::nullopt;
        records.append(*std::move(record));
    }
    return records;
}

}
