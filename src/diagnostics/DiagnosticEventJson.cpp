// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/ReferenceDate.h"
#include "base/StrictJson.h"
#include "diagnostics/DiagnosticEventText.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace velarin {

namespace {

const QString idKey = QStringLiteral("id");
const QString dateKey = QStringLiteral("date");
const QString categoryKey = QStringLiteral("category");
const QString messageKey = QStringLiteral("message");

QString uuidText(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QUuid> uuidFromText(const QString& text)
{
    // QUuid reads more forms than the canonical one, and makes a null id of what it cannot read.
    const QUuid id = QUuid::fromString(text);
    return uuidText(id) == text.toUpper() ? std::optional(id) : std::nullopt;
}

std::optional<DiagnosticEvent> decodeEvent(const QJsonValue& value)
{
    StrictJson json(value);
    const auto id = uuidFromText(json.requiredText(idKey));
    const auto date = fromReferenceSeconds(json.requiredNumber(dateKey));
    const auto category = diagnosticCategoryFromText(json.requiredText(categoryKey));
    const QString message = json.requiredText(messageKey);
    if (!json.isValid() || !id || !date || !category)
        return std::nullopt;
    return DiagnosticEvent{ *id, *date, *category, message };
}

}

QByteArray encodeDiagnostics(const QList<DiagnosticEvent>& events)
{
    QJsonArray array;
    for (const DiagnosticEvent& event : events) {
        array.append(QJsonObject{
            { idKey, uuidText(event.id) },
            { dateKey, toReferenceSeconds(event.date) },
            { categoryKey, toText(event.category) },
            { messageKey, event.message },
        });
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<QList<DiagnosticEvent>> decodeDiagnostics(const QByteArray& json)
{
    return decodeJsonArray<DiagnosticEvent>(json, decodeEvent);
}

}
