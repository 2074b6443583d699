// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/Station.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>
#include <QSet>

#include <limits>

namespace velarin::test {

namespace {

Station fullStation()
{
    Station station;
    station.id = QStringLiteral("it/uno");
    station.name = QStringLiteral("Uno");
    station.streamUrl = QStringLiteral(" http://host/uno ");
    station.genre = QStringLiteral("Pop");
    station.group = QStringLiteral("Lazio");
    station.region = QStringLiteral("Lazio");
    station.logoUrl = QStringLiteral("http://host/logo.png");
    station.homepage = QStringLiteral("http://host/");
    station.bitrate = 128;
    station.popularity = std::numeric_limits<qint64>::max();
    station.bundled = true;
    station.alternateStreamUrl = QStringLiteral("http://host/due");
    station.countryCode = QStringLiteral("IT");
    station.custom = true;
    return station;
}

// A good station, and after it one with this field more, or in the place of its own.
std::optional<QList<Station>> withField(const QByteArray& field)
{
    return decodeStations(
        R"([{"id":"a","name":"A","streamUrl":"http://a"},{"id":"b","name":"B","streamUrl":"http://b",)" + field + "}]");
}

}

TEST(StationJsonTest, aFullStationIsWrittenWithEveryKey)
{
    const QJsonObject expected = QJsonDocument::fromJson(R"({
        "id": "it/uno", "name": "Uno", "streamUrl": " http://host/uno ", "genre": "Pop", "group": "Lazio",
        "region": "Lazio", "logoUrl": "http://host/logo.png", "homepage": "http://host/", "bitrate": 128,
        "popularity": 9223372036854775807, "bundled": true, "alternateStreamUrl": "http://host/due",
        "countryCode": "IT", "custom": true })")
                                     .object();

    EXPECT_EQ(toJson(fullStation()), expected);
}

TEST(StationJsonTest, whatIsAbsentIsLeftOutAndTheRestAlwaysWritten)
{
    Station station;
    station.id = QStringLiteral("a");

    const QJsonObject expected = QJsonDocument::fromJson(R"({
        "id": "a", "name": "", "streamUrl": "", "genre": "Varie", "group": "Altre", "bitrate": 0, "popularity": 0,
        "bundled": false, "custom": false })")
                                     .object();
    EXPECT_EQ(toJson(station), expected);
}

TEST(StationJsonTest, whatWasWrittenReadsTheSame)
{
    Station bare;
    bare.id = QStringLiteral("b");
    bare.popularity = std::numeric_limits<qint64>::min();
    const QList<Station> stations{ fullStation(), bare };

    EXPECT_EQ(decodeStations(encodeStations(stations)), stations);
}

TEST(StationJsonTest, aFileHasNoLineBreaks)
{
    EXPECT_EQ(encodeStations({}), QByteArrayLiteral("[]"));
    EXPECT_FALSE(encodeStations({ fullStation() }).contains('\n'));
}

TEST(StationJsonTest, absentAndNullFieldsTakeTheirDefaults)
{
    const auto absent = decodeStations(R"([{"id":"a","name":"A","streamUrl":"s"}])");
    const auto null = decodeStations(R"([{"id":"a","name":"A","streamUrl":"s","genre":null,"group":null,"region":null,
        "logoUrl":null,"homepage":null,"bitrate":null,"popularity":null,"bundled":null,"alternateStreamUrl":null,
        "countryCode":null,"custom":null}])");

    Station expected;
    expected.id = QStringLiteral("a");
    expected.name = QStringLiteral("A");
    expected.streamUrl = QStringLiteral("s");
    EXPECT_EQ(absent, QList<Station>{ expected });
    EXPECT_EQ(null, QList<Station>{ expected });
}

TEST(StationJsonTest, theCountryIsUpperCasedAndNotTrimmed)
{
    const auto stations = withField(R"("countryCode":" fr ")");

    ASSERT_TRUE(stations);
    EXPECT_EQ(stations->last().countryCode, QStringLiteral(" FR "));
}

TEST(StationJsonTest, unknownKeysAreIgnored)
{
    EXPECT_TRUE(withField(R"("codec":{"name":["MP3"]})"));
}

TEST(StationJsonTest, numbersAreWholeNumbersOfSixtyFourBits)
{
    EXPECT_EQ(withField(R"("bitrate":9223372036854775807)")->last().bitrate, std::numeric_limits<qint64>::max());
    EXPECT_EQ(withField(R"("bitrate":-9223372036854775808)")->last().bitrate, std::numeric_limits<qint64>::min());
    EXPECT_EQ(withField(R"("bitrate":128.0)")->last().bitrate, 128);
    EXPECT_EQ(withField(R"("bitrate":9007199254740993)")->last().bitrate, 9007199254740993);
    for (const char* number : { "1.5", "9223372036854775808", "1e19", "-1e19", "1e308" })
        EXPECT_EQ(withField(QByteArray("\"popularity\":") + number), std::nullopt) << number;
}

TEST(StationJsonTest, oneFieldOfAWrongTypeFailsTheWholeDocument)
{
    for (const char* field :
        { R"("genre":3)", R"("group":true)", R"("region":[])", R"("logoUrl":1)", R"("homepage":{})",
            R"("bitrate":"128")", R"("bitrate":true)", R"("popularity":"")", R"("bundled":1)", R"("bundled":"true")",
            R"("alternateStreamUrl":0)", R"("countryCode":39)", R"("custom":0)", R"("id":7)", R"("name":false)" })
        EXPECT_EQ(withField(field), std::nullopt) << field;
}

TEST(StationJsonTest, oneMissingRequiredKeyFailsTheWholeDocument)
{
    for (const char* station : { R"({"name":"A","streamUrl":"s"})", R"({"id":"a","streamUrl":"s"})",
             R"({"id":"a","name":"A"})", R"({"id":null,"name":"A","streamUrl":"s"})", "7", "null", "[]" })
        EXPECT_EQ(
            decodeStations(QByteArray(R"([{"id":"g","name":"G","streamUrl":"s"},)") + station + ']'), std::nullopt)
            << station;
}

TEST(StationJsonTest, whatIsNoArrayFails)
{
    for (const QByteArray& json : { QByteArray(), QByteArray("{}"), QByteArray("null"), QByteArray("[{}"),
             QByteArray("\xff[]"), QByteArray(5000, '[') })
        EXPECT_EQ(decodeStations(json), std::nullopt) << json.left(20).constData();
}

class BundledStationsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QFile file(QStringLiteral(":/catalogue/stations.json"));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const auto decoded = decodeStations(file.readAll());
        ASSERT_TRUE(decoded);
        stations = *decoded;
    }

    QList<Station> stations;
};

TEST_F(BundledStationsTest, theFileIsCompiledInAndDecodes)
{
    EXPECT_GT(stations.size(), 200);
}

TEST_F(BundledStationsTest, noTwoStationsShareAnIdOrAKey)
{
    QSet<QString> ids;
    QSet<QString> keys;
    for (const Station& station : stations) {
        EXPECT_FALSE(ids.contains(station.id)) << qPrintable(station.id);
        EXPECT_FALSE(keys.contains(catalogueKey(station))) << qPrintable(station.name);
        ids.insert(station.id);
        keys.insert(catalogueKey(station));
    }
}

TEST_F(BundledStationsTest, everyStationIsItalianNamedAndHasAnAddress)
{
    for (const Station& station : stations) {
        EXPECT_FALSE(station.isWorld()) << qPrintable(station.id);
        EXPECT_FALSE(station.name.isEmpty()) << qPrintable(station.id);
        EXPECT_TRUE(station.streamURL()) << qPrintable(station.id);
    }
}

}
