// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace velarin {

// One radio station. Two stations are the same for the catalogue if their catalogueKey() is; record equality covers
// every field.
struct Station
{
    // Stable for ever: favourites, recents and alarms keep it.
    QString id;
    QString name;
    // As it was given, not trimmed; see streamURL().
    QString streamUrl;
    QString genre{ QStringLiteral("Varie") };
    QString group{ QStringLiteral("Altre") };
    std::optional<QString> region;
    std::optional<QString> logoUrl;
    std::optional<QString> homepage;
    // Kilobits per second; 0 is unknown.
    qint64 bitrate{ 0 };
    // A weight: the greater, the more listened.
    qint64 popularity{ 0 };
    // From a catalogue file of the application.
    bool bundled{ false };
    // A second address, tried when the first one fails in certain ways.
    std::optional<QString> alternateStreamUrl;
    // ISO 3166 alpha-2, upper case; absent means Italy wherever a country is needed.
    std::optional<QString> countryCode;
    // Added by the user.
    bool custom{ false };

    bool operator==(const Station&) const = default;

    // Foreign. A malformed code counts as Italian.
    [[nodiscard]] bool isWorld() const;
    // The address to play; absent if no URL can be made of it.
    [[nodiscard]] std::optional<QUrl> streamURL() const;
    // Absent also if it is the same address.
    [[nodiscard]] std::optional<QUrl> alternateStreamURL() const;
    [[nodiscard]] QString genreLabel() const;
    // The genre, and the place where there is one to tell: "Pop · Lazio".
    [[nodiscard]] QString subtitle() const;
};

// Country, "|", normalised name: the one notion of sameness in the catalogue.
[[nodiscard]] QString catalogueKey(const Station& station);

// JSON form, one object a station, an array a file. Reading is strict: a wrong type or a missing key anywhere fails the
// whole document.
[[nodiscard]] QJsonObject toJson(const Station& station);
[[nodiscard]] QByteArray encodeStations(const QList<Station>& stations);
[[nodiscard]] std::optional<QList<Station>> decodeStations(const QByteArray& json);

}
