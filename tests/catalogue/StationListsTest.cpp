// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/StationLists.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <limits>

namespace velarin::test {

namespace {

Station station(const QString& id, const QString& name, qint64 popularity = 0, bool bundled = false)
{
    Station made;
    made.id = id;
    made.name = name;
    made.popularity = popularity;
    made.bundled = bundled;
    return made;
}

QString ids(const QList<Station>& stations)
{
    QStringList result;
    for (const Station& each : stations)
        result.append(each.id);
    return result.join(u' ');
}

}

TEST(StationListsTest, bundledStationsOutweighEveryDirectory)
{
    const QList<Station> merged =
        StationLists::mergedItalian({ station(QStringLiteral("a"), QStringLiteral("Uno"), 5) });

    ASSERT_EQ(merged.size(), 1);
    EXPECT_TRUE(merged.first().bundled);
    EXPECT_EQ(merged.first().popularity, 100'005);
}

TEST(StationListsTest, theGreatestWeightDoesNotOverflow)
{
    constexpr qint64 greatest = std::numeric_limits<qint64>::max();
    const QList<Station> merged =
        StationLists::mergedItalian({ station(QStringLiteral("a"), QStringLiteral("Uno"), greatest) });

    EXPECT_EQ(merged.first().popularity, greatest);
}

TEST(StationListsTest, theFirstOfStationsWithOneKeyStays)
{
    const QList<Station> stations{ station(QStringLiteral("a"), QStringLiteral("Radio Nova")),
        station(QStringLiteral("b"), QStringLiteral("Altra")),
        station(QStringLiteral("c"), QStringLiteral("RADIO nova!")) };

    EXPECT_EQ(ids(StationLists::deduplicated(stations)), QStringLiteral("a b"));
    EXPECT_EQ(ids(StationLists::mergedItalian(stations)), QStringLiteral("a b"));
}

TEST(StationListsTest, ofAllNamesInAnotherScriptTheFirstStays)
{
    const QList<Station> stations{ station(QStringLiteral("a"), QStringLiteral("Радио")),
        station(QStringLiteral("b"), QStringLiteral("Эхо")) };

    EXPECT_EQ(ids(StationLists::deduplicated(stations)), QStringLiteral("a"));
}

TEST(StationListsTest, namesAreSortedLowerCasedByCodePoint)
{
    const QList<Station> stations{ station(QStringLiteral("emoji"), QStringLiteral("\U0001F600")),
        station(QStringLiteral("accent"), QStringLiteral("Èlite")),
        station(QStringLiteral("Z"), QStringLiteral("Zeta")), station(QStringLiteral("wide"), QStringLiteral("\uFF21")),
        station(QStringLiteral("a"), QStringLiteral("alfa")), station(QStringLiteral("B"), QStringLiteral("Beta")),
        station(QStringLiteral("1"), QStringLiteral("101")) };

    EXPECT_EQ(ids(StationLists::sortedByName(stations)), QStringLiteral("1 a B Z accent wide emoji"));
}

TEST(StationListsTest, stationsOfOneNameKeepTheirOrder)
{
    const QList<Station> stations{ station(QStringLiteral("b"), QStringLiteral("Uno")),
        station(QStringLiteral("a"), QStringLiteral("UNO")), station(QStringLiteral("c"), QStringLiteral("uno")) };

    EXPECT_EQ(ids(StationLists::sortedByName(stations)), QStringLiteral("b a c"));
}

TEST(StationListsTest, popularPutsBundledOnesFirstThenTheMostListened)
{
    const QList<Station> stations{ station(QStringLiteral("clicks"), QString(), 9'000'000),
        station(QStringLiteral("second"), QString(), 10, true), station(QStringLiteral("first"), QString(), 20, true),
        station(QStringLiteral("third"), QString(), 10, true), station(QStringLiteral("few"), QString(), 3) };

    EXPECT_EQ(ids(StationLists::popular(stations, 10)), QStringLiteral("first second third clicks few"));
    EXPECT_EQ(ids(StationLists::popular(stations, 2)), QStringLiteral("first second"));
    EXPECT_TRUE(StationLists::popular(stations, 0).isEmpty());
    EXPECT_TRUE(StationLists::popular({}, 5).isEmpty());
}

TEST(StationListsTest, theFirstOfEqualIdsIsKnownByIt)
{
    const StationLists::Catalogue catalogue = StationLists::catalogueOf(
        { station(QStringLiteral("a"), QStringLiteral("Zeta")), station(QStringLiteral("a"), QStringLiteral("Alfa")) });

    EXPECT_EQ(catalogue.italian.size(), 2);
    EXPECT_EQ(catalogue.byId.value(QStringLiteral("a")).name, QStringLiteral("Alfa"));
}

TEST(StationListsTest, aQueueStandsAtItsStationOrAtItsHead)
{
    const QList<Station> stations{ station(QStringLiteral("a"), QString()), station(QStringLiteral("b"), QString()),
        station(QStringLiteral("b"), QStringLiteral("again")) };

    EXPECT_EQ(StationLists::queueAt(stations, QStringLiteral("b")), (StationQueue{ stations, 1 }));
    EXPECT_EQ(StationLists::queueAt(stations, QStringLiteral("x")), (StationQueue{ stations, 0 }));
    EXPECT_EQ(StationLists::indexOf(stations, QStringLiteral("x")), std::nullopt);
}

}
