// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/Station.h"

#include "base/TextFolding.h"
#include "base/Urls.h"
#include "catalogue/Country.h"

#include <QCoreApplication>

namespace velarin {

namespace {

const QString italy = QStringLiteral("IT");

QString countryPart(const std::optional<QString>& countryCode)
{
    return countryCode ? countryCode->toUpper() : italy;
}

// The place that tells a station from others of its genre; empty where there is none.
QString place(const Station& station)
{
    if (!station.isWorld())
        return trimmed(station.region.value_or(QString()));
    return characterCount(*station.countryCode) == 2 ? Country::displayName(*station.countryCode) : QString();
}

}

bool Station::isWorld() const
{
    if (!countryCode)
        return false;
    const QString code = trimmed(*countryCode);
    return characterCount(code) == 2 && code.toUpper() != italy;
}

std::optional<QUrl> Station::streamURL() const
{
    return urlFromText(streamUrl);
}

std::optional<QUrl> Station::alternateStreamURL() const
{
    if (!alternateStreamUrl || trimmed(*alternateStreamUrl) == trimmed(streamUrl))
        return std::nullopt;
    return urlFromText(*alternateStreamUrl);
}

QString Station::genreLabel() const
{
    if (genre == u"Varie")
        return QCoreApplication::translate("Station", "Varie");
    if (genre == u"Anteprima")
        return QCoreApplication::translate("Station", "Anteprima");
    return genre;
}

QString Station::subtitle() const
{
    const QString where = place(*this);
    if (where.isEmpty() || equalsIgnoringCase(where, genre))
        return genreLabel();
    return genreLabel() + QStringLiteral(" · ") + where;
}

QString catalogueKey(const Station& station)
{
    return countryPart(station.countryCode) + u'|' + normalizedForMatching(station.name);
}

}
