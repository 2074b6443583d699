// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/RepositoryFixture.h"

#include <QCoreApplication>

namespace velarin::test {

class StationRepositoryTest : public RepositoryFixture
{
protected:
    static Station foreign(const QString& id)
    {
        Station made = station(id);
        made.countryCode = QStringLiteral("FR");
        return made;
    }

    // Radio 00 to Radio 59, each more listened than the one before.
    static QList<Station> sixtyStations()
    {
        QList<Station> stations;
        for (int number = 0; number < 60; ++number)
            stations.append(station(QStringLiteral("%1").arg(number, 2, 10, QChar(u'0')), number));
        return stations;
    }
};

TEST_F(StationRepositoryTest, beforeTheFirstLoadEveryListIsEmpty)
{
    bundle({ station(QStringLiteral("a")) });
    defaults.setStrings(QStringLiteral("favorites"), { QStringLiteral("a") });
    defaults.setStrings(QStringLiteral("recent_stations"), { QStringLiteral("a") });
    const auto repository = make();

    EXPECT_FALSE(repository->isLoaded());
    EXPECT_EQ(repository->station(QStringLiteral("a")), std::nullopt);
    EXPECT_TRUE(repository->popular(10).isEmpty());
    EXPECT_TRUE(repository->sortedCache().isEmpty());
    EXPECT_TRUE(repository->favoriteStations().isEmpty());
    EXPECT_TRUE(repository->recentStations(10).isEmpty());
    EXPECT_EQ(repository->resumeQueue(), std::nullopt);
    EXPECT_EQ(repository->favorites().size(), 1);
}

TEST_F(StationRepositoryTest, constructionTouchesNoFile)
{
    bundle({ station(QStringLiteral("a")) });
    const auto repository = make();

    finishLoad();

    EXPECT_FALSE(repository->isLoaded());
    EXPECT_TRUE(files.written.isEmpty());
}

TEST_F(StationRepositoryTest, theFileIsReadAndDecodedOffTheMainThread)
{
    bundle({ station(QStringLiteral("a")) });
    const auto repository = make();

    repository->ensureLoaded([] {});
    EXPECT_EQ(executor.waiting(), 0U);
    files.deliverReads();
    EXPECT_EQ(executor.waiting(), 1U);
    EXPECT_FALSE(repository->isLoaded());
    executor.runAll();

    EXPECT_TRUE(repository->isLoaded());
}

TEST_F(StationRepositoryTest, anyNumberOfCallersShareOneLoad)
{
    bundle({ station(QStringLiteral("a")) });
    const auto repository = make();
    QStringList answered;

    repository->ensureLoaded([&] { answered.append(QStringLiteral("first")); });
    repository->ensureLoaded([&] { answered.append(QStringLiteral("second")); });
    files.deliverReads();
    repository->ensureLoaded([&] { answered.append(QStringLiteral("third")); });
    EXPECT_EQ(executor.waiting(), 1U);
    EXPECT_TRUE(answered.isEmpty());
    executor.runAll();

    EXPECT_EQ(answered, (QStringList{ QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third") }));
    EXPECT_EQ(repository->revision(), 1);
}

TEST_F(StationRepositoryTest, onceLoadedACallerIsAnsweredInALaterTurnWithoutReading)
{
    const auto repository = loaded({ station(QStringLiteral("a")) });
    bool answered = false;

    repository->ensureLoaded([&answered] { answered = true; });
    EXPECT_FALSE(answered);
    QCoreApplication::sendPostedEvents();

    EXPECT_TRUE(answered);
    files.deliverReads();
    EXPECT_EQ(executor.waiting(), 0U);
}

TEST_F(StationRepositoryTest, aRepositoryThatGoesAwayDuringItsLoadAnswersNobody)
{
    bundle({ station(QStringLiteral("a")) });
    for (const bool readFirst : { false, true }) {
        auto repository = make();
        bool answered = false;
        repository->ensureLoaded([&answered] { answered = true; });
        if (readFirst)
            files.deliverReads();
        repository.reset();
        finishLoad();
        EXPECT_FALSE(answered);
    }
}

TEST_F(StationRepositoryTest, theListsAreThereWhenTheLoadIsAnnounced)
{
    bundle({ station(QStringLiteral("a")) });
    const auto repository = make();
    qsizetype sizeWhenPosted = 0;
    bool loadedWhenPosted = true;
    QObject::connect(&broadcasts, &Broadcasts::radioStationsDidChange, &broadcasts, [&] {
        sizeWhenPosted = repository->sortedCache().size();
        loadedWhenPosted = repository->isLoaded();
    });

    repository->ensureLoaded([] {});
    finishLoad();

    EXPECT_EQ(sizeWhenPosted, 1);
    EXPECT_FALSE(loadedWhenPosted);
    EXPECT_EQ(posted, QStringList{ QStringLiteral("stations") });
    EXPECT_EQ(repository->revision(), 1);
}

TEST_F(StationRepositoryTest, withTheBundledFileMissingEverythingIsEmpty)
{
    const auto repository = make();
    repository->ensureLoaded([] {});
    finishLoad();

    EXPECT_TRUE(repository->isLoaded());
    EXPECT_TRUE(repository->popular(10).isEmpty());
    EXPECT_TRUE(repository->sortedCache().isEmpty());
    EXPECT_EQ(repository->resumeQueue(), std::nullopt);
}

TEST_F(StationRepositoryTest, aFileThatDoesNotDecodeOrIsTooLargeGivesAnEmptyList)
{
    for (const QByteArray& content : { QByteArray("[{}]"), QByteArray("[]") + QByteArray(8 * 1024 * 1024, ' ') }) {
        files.contents[StationRepository::Sources().bundledItalian] = content;
        const auto repository = make();
        repository->ensureLoaded([] {});
        finishLoad();
        EXPECT_TRUE(repository->isLoaded());
        EXPECT_TRUE(repository->sortedCache().isEmpty());
    }
}

TEST_F(StationRepositoryTest, withNothingElseTheCatalogueIsTheBundledFile)
{
    const auto repository = loaded({ station(QStringLiteral("b"), 7), station(QStringLiteral("a")) });

    EXPECT_EQ(ids(repository->sortedCache()), (QStringList{ QStringLiteral("a"), QStringLiteral("b") }));
    const auto known = repository->station(QStringLiteral("b"));
    ASSERT_TRUE(known);
    EXPECT_TRUE(known->bundled);
    EXPECT_EQ(known->popularity, 100'007);
    EXPECT_EQ(repository->station(QStringLiteral("c")), std::nullopt);
}

TEST_F(StationRepositoryTest, favouritesAreSortedByNameAndUnknownOnesStay)
{
    const auto repository =
        loaded({ station(QStringLiteral("a")), station(QStringLiteral("B")), station(QStringLiteral("c")) });
    for (const QString& id : { QStringLiteral("c"), QStringLiteral("gone"), QStringLiteral("B"), QStringLiteral("a") })
        repository->toggleFavorite(id);

    EXPECT_EQ(ids(repository->favoriteStations()),
        (QStringList{ QStringLiteral("a"), QStringLiteral("B"), QStringLiteral("c") }));
    EXPECT_TRUE(repository->favorites().contains(QStringLiteral("gone")));
}

TEST_F(StationRepositoryTest, recentsSkipUnknownStationsBeforeTheyAreCut)
{
    const auto repository =
        loaded({ station(QStringLiteral("a")), station(QStringLiteral("b")), station(QStringLiteral("c")) });
    for (const QString& id : { QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("gone"), QStringLiteral("c") })
        repository->setLastPlayed(id);

    EXPECT_EQ(ids(repository->recentStations(2)), (QStringList{ QStringLiteral("c"), QStringLiteral("b") }));
    EXPECT_EQ(repository->recentStations(10).size(), 3);
    EXPECT_TRUE(repository->recentStations(0).isEmpty());
    EXPECT_TRUE(repository->recentIds().contains(QStringLiteral("gone")));
}

TEST_F(StationRepositoryTest, theQueueOfAFavouriteIsTheFavourites)
{
    const auto repository =
        loaded({ station(QStringLiteral("a")), station(QStringLiteral("b")), station(QStringLiteral("c")) });
    repository->toggleFavorite(QStringLiteral("c"));
    repository->toggleFavorite(QStringLiteral("b"));

    const StationQueue queue = repository->queue(station(QStringLiteral("c")));

    EXPECT_EQ(ids(queue.stations), (QStringList{ QStringLiteral("b"), QStringLiteral("c") }));
    EXPECT_EQ(queue.index, 1);
}

TEST_F(StationRepositoryTest, theQueueOfAPopularStationIsTheFiftyMostListened)
{
    const auto repository = loaded(sixtyStations());

    const StationQueue queue = repository->queue(station(QStringLiteral("58")));

    EXPECT_EQ(queue.stations, repository->popular(50));
    EXPECT_EQ(queue.index, 1);
}

TEST_F(StationRepositoryTest, theQueueOfALessListenedStationIsTheWholeItalianList)
{
    const auto repository = loaded(sixtyStations());

    const StationQueue queue = repository->queue(station(QStringLiteral("03")));

    EXPECT_EQ(queue.stations, repository->sortedCache());
    EXPECT_EQ(queue.index, 3);
}

TEST_F(StationRepositoryTest, anUnknownItalianStationGetsTheItalianListFromItsStart)
{
    const auto repository = loaded({ station(QStringLiteral("a")) });

    const StationQueue queue = repository->queue(station(QStringLiteral("gone")));

    EXPECT_EQ(ids(queue.stations), QStringList{ QStringLiteral("a") });
    EXPECT_EQ(queue.index, 0);
}

TEST_F(StationRepositoryTest, aStationThatLeftTheFavouritesGetsItsOrdinaryNeighboursBack)
{
    const auto repository = loaded({ station(QStringLiteral("a")), station(QStringLiteral("b")) });
    repository->toggleFavorite(QStringLiteral("b"));
    EXPECT_EQ(repository->queue(station(QStringLiteral("b"))).stations.size(), 1);

    repository->toggleFavorite(QStringLiteral("b"));

    EXPECT_EQ(repository->queue(station(QStringLiteral("b"))).stations, repository->popular(50));
}

TEST_F(StationRepositoryTest, aForeignStationNeverGetsItalianNeighbours)
{
    const auto repository = loaded({ station(QStringLiteral("a")) });

    EXPECT_EQ(repository->queue(foreign(QStringLiteral("f"))), (StationQueue{ { foreign(QStringLiteral("f")) }, 0 }));
}

TEST_F(StationRepositoryTest, withNothingLoadedAStationIsItsOwnQueue)
{
    EXPECT_EQ(make()->queue(station(QStringLiteral("a"))), (StationQueue{ { station(QStringLiteral("a")) }, 0 }));
}

TEST_F(StationRepositoryTest, resumingGoesOnInTheFavouritesAtTheLastStation)
{
    const auto repository =
        loaded({ station(QStringLiteral("a")), station(QStringLiteral("b")), station(QStringLiteral("c")) });
    repository->toggleFavorite(QStringLiteral("a"));
    repository->toggleFavorite(QStringLiteral("b"));
    repository->setLastPlayed(QStringLiteral("b"));

    const auto queue = repository->resumeQueue();

    ASSERT_TRUE(queue);
    EXPECT_EQ(ids(queue->stations), (QStringList{ QStringLiteral("a"), QStringLiteral("b") }));
    EXPECT_EQ(queue->index, 1);
}

TEST_F(StationRepositoryTest, resumingPutsALastStationThatIsNoFavouriteAtTheHead)
{
    const auto repository = loaded({ station(QStringLiteral("a")), station(QStringLiteral("b")) });
    repository->toggleFavorite(QStringLiteral("a"));
    repository->setLastPlayed(QStringLiteral("b"));

    const auto queue = repository->resumeQueue();

    ASSERT_TRUE(queue);
    EXPECT_EQ(ids(queue->stations), (QStringList{ QStringLiteral("b"), QStringLiteral("a") }));
    EXPECT_EQ(queue->index, 0);
}

TEST_F(StationRepositoryTest, resumingWithoutFavouritesTakesTheMostListened)
{
    const auto repository = loaded(sixtyStations());
    EXPECT_EQ(repository->resumeQueue(), (StationQueue{ repository->popular(50), 0 }));

    repository->setLastPlayed(QStringLiteral("57"));
    EXPECT_EQ(repository->resumeQueue(), (StationQueue{ repository->popular(50), 2 }));

    repository->setLastPlayed(QStringLiteral("03"));
    EXPECT_EQ(repository->resumeQueue()->stations.size(), 51);
    EXPECT_EQ(repository->resumeQueue()->stations.first().id, QStringLiteral("03"));
}

TEST_F(StationRepositoryTest, resumingIgnoresALastStationThatNobodyKnows)
{
    const auto repository = loaded({ station(QStringLiteral("a")) });
    repository->setLastPlayed(QStringLiteral("gone"));

    EXPECT_EQ(repository->resumeQueue(), (StationQueue{ repository->popular(50), 0 }));
}

}
