// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/Station.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace velarin::test {

namespace {

Station named(const QString& name, const std::optional<QString>& countryCode = std::nullopt)
{
    Station station;
    station.name = name;
    station.countryCode = countryCode;
    return station;
}

Station streaming(const QString& address, const std::optional<QString>& alternate = std::nullopt)
{
    Station station;
    station.streamUrl = address;
    station.alternateStreamUrl = alternate;
    return station;
}

}

TEST(StationKeyTest, theKeyIsTheCountryAndTheNormalisedName)
{
    EXPECT_EQ(catalogueKey(named(QStringLiteral("R.T.L. 102.5"))), QStringLiteral("IT|rtl 1025"));
    EXPECT_EQ(catalogueKey(named(QStringLiteral("Radio-Uno"), QStringLiteral("fr"))), QStringLiteral("FR|radiouno"));
}

TEST(StationKeyTest, oneNameInTwoCountriesIsTwoStations)
{
    EXPECT_NE(catalogueKey(named(QStringLiteral("Radio Nova"), QStringLiteral("FR"))),
        catalogueKey(named(QStringLiteral("Radio Nova"))));
}

TEST(StationKeyTest, marksCaseAndBlanksDoNotTellStationsApart)
{
    EXPECT_EQ(catalogueKey(named(QStringLiteral("Rádio  NOVA!"))), catalogueKey(named(QStringLiteral("radio nova"))));
}

TEST(StationKeyTest, namesInOtherScriptsShareTheKeyOfTheirCountry)
{
    EXPECT_EQ(catalogueKey(named(QStringLiteral("Радио"), QStringLiteral("RU"))), QStringLiteral("RU|"));
    EXPECT_EQ(catalogueKey(named(QStringLiteral("Эхо"), QStringLiteral("RU"))), QStringLiteral("RU|"));
}

TEST(StationKeyTest, blanksRoundAStoredCountryStayInTheKey)
{
    const auto read = decodeStations(R"([{"id":"a","name":"Uno","streamUrl":"","countryCode":" it "}])");

    ASSERT_TRUE(read);
    EXPECT_EQ(read->first().countryCode, QStringLiteral(" IT "));
    EXPECT_FALSE(read->first().isWorld());
    EXPECT_NE(catalogueKey(read->first()), catalogueKey(named(QStringLiteral("Uno"))));
}

TEST(StationKeyTest, aCountryOfThreeLettersIsNeitherForeignNorItalianByKey)
{
    const Station station = named(QStringLiteral("Uno"), QStringLiteral("ITA"));

    EXPECT_FALSE(station.isWorld());
    EXPECT_EQ(catalogueKey(station), QStringLiteral("ITA|uno"));
}

TEST(StationTest, onlyATwoLetterCodeOtherThanItalysIsForeign)
{
    struct
    {
        std::optional<QString> code;
        bool world;
    } const rows[] = {
        { std::nullopt, false },
        { QString(), false },
        { QStringLiteral("IT"), false },
        { QStringLiteral("it"), false },
        { QStringLiteral(" IT\n"), false },
        { QStringLiteral("F"), false },
        { QStringLiteral("FRA"), false },
        { QStringLiteral("FR"), true },
        { QStringLiteral("fr"), true },
        { QStringLiteral("\tfr "), true },
    };
    for (const auto& row : rows)
        EXPECT_EQ(named(QString(), row.code).isWorld(), row.world) << qPrintable(row.code.value_or(QString()));
}

TEST(StationTest, theAddressIsTrimmed)
{
    EXPECT_EQ(
        streaming(QStringLiteral(" http://host/stream\n")).streamURL(), QUrl(QStringLiteral("http://host/stream")));
}

TEST(StationTest, anAddressWithAccentsIsRescuedByEncoding)
{
    const auto url = streaming(QStringLiteral("http://host/città viva")).streamURL();

    ASSERT_TRUE(url);
    EXPECT_EQ(url->toEncoded(), "http://host/citt%C3%A0%20viva");
}

TEST(StationTest, whatIsNoAddressGivesNone)
{
    EXPECT_EQ(streaming(QString()).streamURL(), std::nullopt);
    EXPECT_EQ(streaming(QStringLiteral("senza schema")).streamURL(), std::nullopt);
}

TEST(StationTest, anAlternateThatIsTheSameApartFromBlanksIsNone)
{
    EXPECT_EQ(streaming(QStringLiteral("http://host/a"), QStringLiteral(" http://host/a ")).alternateStreamURL(),
        std::nullopt);
    EXPECT_EQ(streaming(QStringLiteral("http://host/a")).alternateStreamURL(), std::nullopt);
}

TEST(StationTest, anotherAlternateIsReadLikeTheFirstAddress)
{
    const Station station = streaming(QStringLiteral("http://host/a"), QStringLiteral(" http://host/b c "));

    EXPECT_EQ(station.alternateStreamURL(), QUrl(QStringLiteral("http://host/b%20c"), QUrl::StrictMode));
}

TEST(StationTest, theGenreIsShownAsItStands)
{
    for (const QString& genre :
        { QStringLiteral("Varie"), QStringLiteral("Anteprima"), QStringLiteral("Rock anni '80"), QString() }) {
        Station station;
        station.genre = genre;
        EXPECT_EQ(station.genreLabel(), genre);
    }
    EXPECT_EQ(Station().genreLabel(), QStringLiteral("Varie"));
}

TEST(StationTest, theSubtitleNamesThePlaceWhereThereIsOneToTell)
{
    struct
    {
        QString genre;
        std::optional<QString> region;
        std::optional<QString> code;
        QString subtitle;
    } const rows[] = {
        { QStringLiteral("Pop"), std::nullopt, std::nullopt, QStringLiteral("Pop") },
        { QStringLiteral("Pop"), QStringLiteral(" Lazio "), std::nullopt, QStringLiteral("Pop · Lazio") },
        { QStringLiteral("Pop"), QStringLiteral("  "), std::nullopt, QStringLiteral("Pop") },
        { QStringLiteral("lazio"), QStringLiteral("Lazio"), std::nullopt, QStringLiteral("lazio") },
        { QStringLiteral("Pop"), QStringLiteral("Lazio"), QStringLiteral("IT"), QStringLiteral("Pop · Lazio") },
        { QStringLiteral("Pop"), QStringLiteral("Lazio"), QStringLiteral("FR"), QStringLiteral("Pop · Francia") },
        { QStringLiteral("Pop"), std::nullopt, QStringLiteral("nl"), QStringLiteral("Pop · Paesi Bassi") },
        { QStringLiteral("FRANCIA"), std::nullopt, QStringLiteral("FR"), QStringLiteral("FRANCIA") },
        // Foreign once trimmed, but the stored code has four characters.
        { QStringLiteral("Pop"), QStringLiteral("Lazio"), QStringLiteral(" FR "), QStringLiteral("Pop") },
    };
    for (const auto& row : rows) {
        Station station = named(QString(), row.code);
        station.genre = row.genre;
        station.region = row.region;
        EXPECT_EQ(station.subtitle(), row.subtitle);
    }
}

TEST(StationTest, equalityCoversEveryField)
{
    const QString text = QStringLiteral("x");
    const std::vector<std::function<void(Station&)>> changes{
        [&](Station& other) { other.id = text; },
        [&](Station& other) { other.name = text; },
        [&](Station& other) { other.streamUrl = text; },
        [&](Station& other) { other.genre = text; },
        [&](Station& other) { other.group = text; },
        [&](Station& other) { other.region = text; },
        [&](Station& other) { other.logoUrl = text; },
        [&](Station& other) { other.homepage = text; },
        [](Station& other) { other.bitrate = 1; },
        [](Station& other) { other.popularity = 1; },
        [](Station& other) { other.bundled = true; },
        [&](Station& other) { other.alternateStreamUrl = text; },
        [&](Station& other) { other.countryCode = text; },
        [](Station& other) { other.custom = true; },
    };
    const Station station = named(QStringLiteral("Uno"));
    EXPECT_EQ(station, named(QStringLiteral("Uno")));
    for (std::size_t field = 0; field < changes.size(); ++field) {
        Station other = station;
        changes[field](other);
        EXPECT_NE(station, other) << "field " << field;
    }
}

}
