// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/StrictJson.h"
#include "catalogue/Station.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace velarin {

namespace {

const QString idKey = QStringLiteral("id");
const QString nameKey = QStringLiteral("name");
const QString streamUrlKey = QStringLiteral("streamUrl");
const QString genreKey = QStringLiteral("genre");
const QString groupKey = QStringLiteral("group");
const QString regionKey = QStringLiteral("region");
const QString logoUrlKey = QStringLiteral("logoUrl");
const QString homepageKey = QStringLiteral("homepage");
const QString bitrateKey = QStringLiteral("bitrate");
const QString popularityKey = QStringLiteral("popularity");
const QString bundledKey = QStringLiteral("bundled");
const QString alternateStreamUrlKey = QStringLiteral("alternateStreamUrl");
const QString countryCodeKey = QStringLiteral("countryCode");
const QString customKey = QStringLiteral("custom");

void insertIfPresent(QJsonObject& object, const QString& key, const std::optional<QString>& text)
{
    if (text)
        object.insert(key, *text);
}

std::optional<Station> decodeStation(const QJsonValue& value)
{
    StrictJson json(value);
    Station station;
    station.id = json.requiredText(idKey);
    station.name = json.requiredText(nameKey);
    station.streamUrl = json.requiredText(streamUrlKey);
    station.genre = json.text(genreKey).value_or(station.genre);
    station.group = json.text(groupKey).value_or(station.group);
    station.region = json.text(regionKey);
    station.logoUrl = json.text(logoUrlKey);
    station.homepage = json.text(homepageKey);
    station.bitrate = json.integer(bitrateKey).value_or(station.bitrate);
    station.popularity = json.integer(popularityKey).value_or(station.popularity);
    station.bundled = json.boolean(bundledKey).value_or(station.bundled);
    station.alternateStreamUrl = json.text(alternateStreamUrlKey);
    station.countryCode = json.text(countryCodeKey);
    station.custom = json.boolean(customKey).value_or(station.custom);
    if (!json.isValid())
        return std::nullopt;
    // Not trimmed: the blanks of a careless file stay in the catalogue key.
    if (station.countryCode)
        station.countryCode = station.countryCode->toUpper();
    return station;
}

}

QJsonObject toJson(const Station& station)
{
    QJsonObject object{
        { idKey, station.id },
        { nameKey, station.name },
        { streamUrlKey, station.streamUrl },
        { genreKey, station.genre },
        { groupKey, station.group },
        { bitrateKey, station.bitrate },
        { popularityKey, station.popularity },
        { bundledKey, station.bundled },
        { customKey, station.custom },
    };
    insertIfPresent(object, regionKey, station.region);
    insertIfPresent(object, logoUrlKey, station.logoUrl);
    insertIfPresent(object, homepageKey, station.homepage);
    insertIfPresent(object, alternateStreamUrlKey, station.alternateStreamUrl);
    insertIfPresent(object, countryCodeKey, station.countryCode);
    return object;
}

QByteArray encodeStations(const QList<Station>& stations)
{
    QJsonArray array;
    for (const Station& station : stations)
        array.append(toJson(station));
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<QList<Station>> decodeStations(const QByteArray& json)
{
    return decodeJsonArray<Station>(json, decodeStation);
}

}
