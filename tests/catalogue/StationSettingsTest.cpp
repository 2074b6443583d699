// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/RepositoryFixture.h"

#include <QMetaProperty>

namespace velarin::test {

namespace {

QString numbered(int number)
{
    return QStringLiteral("s%1").arg(number);
}

const QString recentsKey = QStringLiteral("recent_stations");
const QString lastKey = QStringLiteral("last_station");
const QString reconnectKey = QStringLiteral("auto_reconnect");
const QString skipKey = QStringLiteral("auto_skip_unreachable");
const QString timeoutKey = QStringLiteral("connect_timeout_seconds");
const QString themeKey = QStringLiteral("theme_mode");
const QString favoritesKey = QStringLiteral("favorites");
const QString syncKey = QStringLiteral("last_sync_date");
const QString carFavoritesKey = QStringLiteral("car_favorites_only");
const QString carPlayKey = QStringLiteral("auto_play_in_car");

}

class StationSettingsTest : public RepositoryFixture
{
};

TEST_F(StationSettingsTest, withNothingStoredEverySettingHasItsDefault)
{
    const auto repository = make();

    EXPECT_TRUE(repository->recentIds().isEmpty());
    EXPECT_EQ(repository->lastPlayedId(), std::nullopt);
    EXPECT_TRUE(repository->autoReconnect());
    EXPECT_FALSE(repository->autoSkipUnreachable());
    EXPECT_EQ(repository->connectTimeoutSeconds(), 8);
    EXPECT_EQ(repository->themeMode(), ThemeMode::system);
    EXPECT_TRUE(repository->favorites().isEmpty());
    EXPECT_EQ(repository->lastSyncDate(), std::nullopt);
    EXPECT_TRUE(repository->carFavoritesOnly());
    EXPECT_TRUE(repository->autoPlayInCar());
    EXPECT_TRUE(defaults.writes.isEmpty());
}

TEST_F(StationSettingsTest, storedValuesAreThereFromConstructionOn)
{
    const QDateTime synced(QDate(2026, 11, 20), QTime(6, 0), Qt::UTC);
    defaults.setStrings(recentsKey, { QStringLiteral("a"), QStringLiteral("b") });
    defaults.setString(lastKey, QStringLiteral("a"));
    defaults.setBoolean(reconnectKey, false);
    defaults.setBoolean(skipKey, true);
    defaults.setInteger(timeoutKey, 6);
    defaults.setString(themeKey, QStringLiteral("dark"));
    defaults.setStrings(favoritesKey, { QStringLiteral("c") });
    defaults.setDate(syncKey, synced);
    defaults.setBoolean(carFavoritesKey, false);
    defaults.setBoolean(carPlayKey, false);

    const auto repository = make();

    EXPECT_EQ(repository->recentIds(), (QStringList{ QStringLiteral("a"), QStringLiteral("b") }));
    EXPECT_EQ(repository->lastPlayedId(), QStringLiteral("a"));
    EXPECT_FALSE(repository->autoReconnect());
    EXPECT_TRUE(repository->autoSkipUnreachable());
    EXPECT_EQ(repository->connectTimeoutSeconds(), 6);
    EXPECT_EQ(repository->themeMode(), ThemeMode::dark);
    EXPECT_EQ(repository->favorites(), QStringList{ QStringLiteral("c") });
    EXPECT_EQ(repository->lastSyncDate(), synced);
    EXPECT_FALSE(repository->carFavoritesOnly());
    EXPECT_FALSE(repository->autoPlayInCar());
}

TEST_F(StationSettingsTest, aStoredValueOfAnotherTypeReadsAsTheDefault)
{
    defaults.stored = { { recentsKey, QStringLiteral("a") }, { lastKey, 3 }, { reconnectKey, 0 },
        { skipKey, QStringLiteral("true") }, { timeoutKey, QStringLiteral("10") }, { themeKey, 2 },
        { favoritesKey, true }, { syncKey, 3 }, { carFavoritesKey, 0 }, { carPlayKey, 0 } };

    const auto repository = make();

    EXPECT_TRUE(repository->recentIds().isEmpty());
    EXPECT_EQ(repository->lastPlayedId(), std::nullopt);
    EXPECT_TRUE(repository->autoReconnect());
    EXPECT_FALSE(repository->autoSkipUnreachable());
    EXPECT_EQ(repository->connectTimeoutSeconds(), 8);
    EXPECT_EQ(repository->themeMode(), ThemeMode::system);
    EXPECT_TRUE(repository->favorites().isEmpty());
    EXPECT_EQ(repository->lastSyncDate(), std::nullopt);
    EXPECT_TRUE(repository->carFavoritesOnly());
    EXPECT_TRUE(repository->autoPlayInCar());
}

TEST_F(StationSettingsTest, aStoredTimeoutIsClampedWhenItIsRead)
{
    struct
    {
        qint64 stored;
        qint64 read;
    } const rows[] = { { 30, 12 }, { 12, 12 }, { 5, 5 }, { 4, 5 }, { -1, 5 } };
    for (const auto& row : rows) {
        defaults.setInteger(timeoutKey, row.stored);
        EXPECT_EQ(make()->connectTimeoutSeconds(), row.read);
    }
}

TEST_F(StationSettingsTest, aTimeoutIsClampedStoredAndAnnouncedEvenIfItStays)
{
    const auto repository = make();

    repository->setConnectTimeout(3);
    EXPECT_EQ(repository->connectTimeoutSeconds(), 5);
    EXPECT_EQ(defaults.integer(timeoutKey), 5);
    repository->setConnectTimeout(5);
    EXPECT_EQ(posted, (QStringList{ QStringLiteral("settings"), QStringLiteral("settings") }));
}

TEST_F(StationSettingsTest, automaticReconnectionIsStoredAndAnnouncedEvenIfItStays)
{
    const auto repository = make();
    int changes = 0;
    QObject::connect(
        repository.get(), &StationRepository::autoReconnectChanged, repository.get(), [&changes] { ++changes; });

    repository->setAutoReconnect(true);
    repository->setAutoReconnect(false);

    EXPECT_FALSE(repository->autoReconnect());
    EXPECT_EQ(defaults.boolean(reconnectKey), false);
    EXPECT_EQ(posted, (QStringList{ QStringLiteral("settings"), QStringLiteral("settings") }));
    EXPECT_EQ(changes, 1);
}

TEST_F(StationSettingsTest, settingTheAutomaticSkipPostsNothing)
{
    const auto repository = make();

    repository->setAutoSkipUnreachable(true);

    EXPECT_TRUE(repository->autoSkipUnreachable());
    EXPECT_EQ(defaults.boolean(skipKey), true);
    EXPECT_TRUE(posted.isEmpty());
}

TEST_F(StationSettingsTest, theThemeIsStoredAsItsTextAndPostsNothing)
{
    const auto repository = make();

    repository->setThemeMode(ThemeMode::light);

    EXPECT_EQ(repository->themeMode(), ThemeMode::light);
    EXPECT_EQ(defaults.string(themeKey), QStringLiteral("light"));
    EXPECT_TRUE(posted.isEmpty());
}

TEST_F(StationSettingsTest, aSettingThatStaysWakesNobody)
{
    const auto repository = make();
    int changes = 0;
    for (const auto changed : { &StationRepository::autoSkipUnreachableChanged,
             &StationRepository::connectTimeoutSecondsChanged, &StationRepository::themeModeChanged,
             &StationRepository::lastPlayedIdChanged, &StationRepository::recentIdsChanged })
        QObject::connect(repository.get(), changed, repository.get(), [&changes] { ++changes; });

    for (int time = 0; time < 2; ++time) {
        repository->setAutoSkipUnreachable(true);
        repository->setConnectTimeout(9);
        repository->setThemeMode(ThemeMode::dark);
        repository->setLastPlayed(QStringLiteral("a"));
    }

    EXPECT_EQ(changes, 5);
}

TEST_F(StationSettingsTest, everySettingIsAPropertyThatTellsItsChanges)
{
    const auto repository = make();
    const QMetaObject& type = *repository->metaObject();
    EXPECT_EQ(type.propertyCount() - type.propertyOffset(), 12);
    for (int index = type.propertyOffset(); index < type.propertyCount(); ++index) {
        const QMetaProperty property = type.property(index);
        EXPECT_TRUE(property.hasNotifySignal()) << property.name();
        EXPECT_TRUE(property.read(repository.get()).isValid()) << property.name();
    }
    EXPECT_EQ(repository->property("connectTimeoutSeconds").toLongLong(), 8);
    EXPECT_EQ(repository->property("themeMode").value<ThemeMode>(), ThemeMode::system);
}

TEST_F(StationSettingsTest, theThirteenthStationPushesTheOldestOut)
{
    const auto repository = make();
    for (int number = 1; number <= 13; ++number)
        repository->setLastPlayed(numbered(number));

    ASSERT_EQ(repository->recentIds().size(), 12);
    EXPECT_EQ(repository->recentIds().first(), numbered(13));
    EXPECT_EQ(repository->recentIds().last(), numbered(2));
    EXPECT_EQ(defaults.strings(recentsKey), repository->recentIds());
    EXPECT_EQ(repository->lastPlayedId(), numbered(13));
}

TEST_F(StationSettingsTest, aStationPlayedAgainMovesToTheHead)
{
    const auto repository = make();
    for (const int number : { 1, 2, 3, 1 })
        repository->setLastPlayed(numbered(number));

    EXPECT_EQ(repository->recentIds(), (QStringList{ numbered(1), numbered(3), numbered(2) }));
    EXPECT_EQ(posted.count(QStringLiteral("library")), 4);
}

TEST_F(StationSettingsTest, replayingTheNewestStoresOnlyTheLastStationAndPostsNothing)
{
    const auto repository = make();
    repository->setLastPlayed(numbered(1));
    posted.clear();
    defaults.writes.clear();

    repository->setLastPlayed(numbered(1));

    EXPECT_EQ(defaults.writes, QStringList{ lastKey });
    EXPECT_TRUE(posted.isEmpty());
}

TEST_F(StationSettingsTest, recentsStoredWithTheIdTwiceHoldItOnceAfterwards)
{
    defaults.setStrings(recentsKey, { numbered(1), numbered(2), numbered(1) });
    const auto repository = make();

    repository->setLastPlayed(numbered(1));

    EXPECT_EQ(repository->recentIds(), (QStringList{ numbered(1), numbered(2) }));
}

TEST_F(StationSettingsTest, togglingTwiceRestoresTheListAndAThirdTimeAppends)
{
    defaults.setStrings(favoritesKey, { numbered(1), numbered(2) });
    const auto repository = make();

    EXPECT_FALSE(repository->toggleFavorite(numbered(1)));
    EXPECT_EQ(repository->favorites(), QStringList{ numbered(2) });
    EXPECT_TRUE(repository->toggleFavorite(numbered(1)));
    EXPECT_EQ(repository->favorites(), (QStringList{ numbered(2), numbered(1) }));

    EXPECT_TRUE(repository->toggleFavorite(numbered(3)));
    EXPECT_FALSE(repository->toggleFavorite(numbered(3)));
    EXPECT_EQ(repository->favorites(), (QStringList{ numbered(2), numbered(1) }));
    EXPECT_TRUE(repository->toggleFavorite(numbered(3)));
    EXPECT_EQ(repository->favorites(), (QStringList{ numbered(2), numbered(1), numbered(3) }));
    EXPECT_EQ(posted.count(QStringLiteral("favorites")), 5);
}

TEST_F(StationSettingsTest, togglingRemovesTheFirstOccurrenceOnly)
{
    defaults.setStrings(favoritesKey, { numbered(1), numbered(2), numbered(1) });
    const auto repository = make();

    EXPECT_FALSE(repository->toggleFavorite(numbered(1)));

    EXPECT_EQ(repository->favorites(), (QStringList{ numbered(2), numbered(1) }));
}

TEST_F(StationSettingsTest, favouritesAreStoredBeforeTheyAreAnnounced)
{
    const auto repository = make();
    std::optional<QStringList> storedWhenPosted;
    QObject::connect(&broadcasts, &Broadcasts::radioFavoritesDidChange, &broadcasts,
        [&] { storedWhenPosted = defaults.strings(favoritesKey); });

    repository->toggleFavorite(numbered(1));

    EXPECT_EQ(storedWhenPosted, QStringList{ numbered(1) });
}

}
