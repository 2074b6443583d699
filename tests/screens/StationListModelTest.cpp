// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/parts/StationListModel.h"

#include "screens/ScreensFixture.h"
#include "screens/italy/ItalyModel.h"

#include <QSignalSpy>

using namespace velarin;
using namespace velarin::test;
using namespace testing;

namespace {

class StationListModelTest : public ScreensFixture
{
protected:
    StationListModelTest() { list.setStations(stations); }

    QVariant at(int row, StationListModel::Role role) { return list.data(list.index(row), role); }

    QList<Station> stations{ stationNamed(QStringLiteral("Azzurra")), stationNamed(QStringLiteral("Blu")),
        stationNamed(QStringLiteral("Èra Blu")) };
    StationListModel list{ repository, radio, coordinator };
};

}

TEST_F(StationListModelTest, aClickPlaysWithTheWholeListAsTheQueue)
{
    list.play(1);
    EXPECT_EQ(radio.station()->id, stations[1].id);
    EXPECT_EQ(radio.queue(), stations);
    EXPECT_EQ(radio.queueIndex(), 1);
}

TEST_F(StationListModelTest, aRowThatIsNotThereDoesNothing)
{
    for (const int row : { -1, 3 }) {
        list.play(row);
        list.toggleFavorite(row);
        list.openHomepage(row);
    }
    EXPECT_FALSE(radio.station().has_value());
    EXPECT_TRUE(repository.favorites().isEmpty());
    EXPECT_FALSE(list.data(list.index(3), StationListModel::NameRole).isValid());
}

TEST_F(StationListModelTest, theStationInHandIsMarkedAndTheOneThatSoundsMovesItsBars)
{
    list.play(1);
    EXPECT_TRUE(at(1, StationListModel::CurrentRole).toBool());
    EXPECT_FALSE(at(1, StationListModel::AiringRole).toBool());
    sound();
    EXPECT_TRUE(at(1, StationListModel::AiringRole).toBool());
    EXPECT_FALSE(at(0, StationListModel::CurrentRole).toBool());
}

TEST_F(StationListModelTest, aRadioThatGaveTheOutputAwayIsNotMarked)
{
    list.play(1);
    coordinator.resign(PlaybackCoordinator::Source::radio);
    EXPECT_FALSE(at(1, StationListModel::CurrentRole).toBool());
}

TEST_F(StationListModelTest, onlyTheTilesThatChangeAreRepainted)
{
    list.play(0);
    const QSignalSpy spy(&list, &QAbstractItemModel::dataChanged);
    list.play(2);
    QSet<int> rows;
    for (const auto& change : spy)
        rows.insert(change.at(0).toModelIndex().row());
    EXPECT_EQ(rows, (QSet<int>{ 0, 2 }));
}

TEST_F(StationListModelTest, theHeartTogglesAndTellsItsRowOnly)
{
    const QSignalSpy spy(&list, &QAbstractItemModel::dataChanged);
    list.toggleFavorite(2);
    EXPECT_TRUE(at(2, StationListModel::FavoriteRole).toBool());
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy[0].at(0).toModelIndex().row(), 2);
    list.toggleFavorite(2);
    EXPECT_FALSE(at(2, StationListModel::FavoriteRole).toBool());
}

TEST_F(StationListModelTest, aReaderHearsTheNameTheSecondLineAndWhatMarksTheTile)
{
    EXPECT_EQ(at(1, StationListModel::SpokenRole).toString(), u"Blu, Pop");
    list.toggleFavorite(1);
    list.play(1);
    sound();
    EXPECT_EQ(at(1, StationListModel::SpokenRole).toString(), u"Blu, Pop, in onda, preferita");
}

TEST_F(StationListModelTest, lettersJumpByNameRoundTheEndWhateverCaseAndAccents)
{
    EXPECT_EQ(list.rowBeginningWith(QStringLiteral("b"), 0), 1);
    EXPECT_EQ(list.rowBeginningWith(QStringLiteral("E"), 0), 2);
    EXPECT_EQ(list.rowBeginningWith(QStringLiteral("az"), 2), 0);
    EXPECT_EQ(list.rowBeginningWith(QStringLiteral("b"), 1), 1);
    EXPECT_EQ(list.rowBeginningWith(QStringLiteral("z"), 0), -1);
    EXPECT_EQ(list.rowBeginningWith(QString(), 0), -1);
    EXPECT_EQ(list.rowBeginningWith(QStringLiteral("a"), -1), 0);
}

TEST_F(StationListModelTest, onlyAWebAddressIsAHomepage)
{
    stations[0].homepage = QStringLiteral("https://radio.example/");
    stations[1].homepage = QStringLiteral("file:///etc/passwd");
    list.setStations(stations);
    EXPECT_TRUE(at(0, StationListModel::HasHomepageRole).toBool());
    EXPECT_FALSE(at(1, StationListModel::HasHomepageRole).toBool());
    EXPECT_FALSE(at(2, StationListModel::HasHomepageRole).toBool());
    const QSignalSpy spy(&list, &StationListModel::homepageRequested);
    for (int row = 0; row < 3; ++row)
        list.openHomepage(row);
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy[0].at(0).toUrl(), QUrl(QStringLiteral("https://radio.example/")));
}

TEST_F(StationListModelTest, theSameListAgainIsNoReset)
{
    const QSignalSpy spy(&list, &QAbstractItemModel::modelReset);
    list.setStations(stations);
    EXPECT_EQ(spy.count(), 0);
    list.setStations({ stations[0] });
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(StationListModelTest, theItalianPageCountsWhatItShows)
{
    ItalyModel italy(repository, radio, coordinator);
    EXPECT_EQ(italy.title(), u"Radio italiane");
    EXPECT_EQ(italy.subtitle(), QString());
    EXPECT_FALSE(italy.isLoaded());
    load(stations);
    EXPECT_TRUE(italy.isLoaded());
    EXPECT_EQ(italy.stations()->count(), 3);
    EXPECT_EQ(italy.subtitle(), u"3 radio in elenco");
}

TEST_F(StationListModelTest, anItalianPageMadeAfterTheLoadIsFullFromTheStart)
{
    load(stations);
    const QList<Station> sorted = repository.sortedCache();
    ItalyModel italy(repository, radio, coordinator);
    ASSERT_EQ(italy.stations()->count(), sorted.size());
    EXPECT_EQ(italy.stations()->data(italy.stations()->index(0), StationListModel::NameRole), sorted[0].name);
}
