// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Migration.h"

#include "support/CapturedLog.h"
#include "support/FakeDefaults.h"
#include "support/FakeFiles.h"

#include <gtest/gtest.h>

#include <QJsonDocument>

namespace velarin::test {

namespace {

const BaseFolders folders{ QStringLiteral("/data"), QStringLiteral("/cache"), QStringLiteral("/config") };
const QString formerSettings = QStringLiteral("/config/com.brenholt.lumarin.json");
const QString migratedKey = QStringLiteral("migrated_from_lumarin");

QString logged(const QString& message)
{
    return QStringLiteral("com.brenholt.velarin.paths: ") + message;
}

}

class MigrationTest : public testing::Test
{
protected:
    Paths run() { return migrate(folders, files, defaults); }

    FakeFiles files;
    FakeDefaults defaults;
};

TEST_F(MigrationTest, theProgramsFoldersAreCalledVelarin)
{
    EXPECT_EQ(run(), (Paths{ QStringLiteral("/data/Velarin"), QStringLiteral("/cache/Velarin") }));
}

TEST_F(MigrationTest, withoutAFormerFolderTheTwoFoldersAreMadeAndNothingElse)
{
    const CapturedLog log;

    const Paths paths = run();

    EXPECT_EQ(files.folders, (QSet<QString>{ paths.support, paths.caches }));
    EXPECT_TRUE(files.contents.isEmpty());
    EXPECT_TRUE(files.written.isEmpty());
    EXPECT_EQ(defaults.writes, QStringList{ migratedKey });
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(MigrationTest, everythingFormerIsMovedInOrderAndTold)
{
    files.folders = { QStringLiteral("/data/Ardevox"), QStringLiteral("/cache/Lumarin") };
    files.contents[QStringLiteral("/data/Ardevox/podcasts.json")] = "podcasts";
    files.contents[QStringLiteral("/data/alarms.json")] = "alarms";
    files.contents[QStringLiteral("/cache/Lumarin/logos/a.png")] = "logo";
    files.contents[formerSettings] = R"({"theme_mode":"dark"})";
    const CapturedLog log;

    run();

    EXPECT_EQ(files.contents.value(QStringLiteral("/data/Velarin/podcasts.json")), "podcasts");
    EXPECT_EQ(files.contents.value(QStringLiteral("/data/Velarin/alarms.json")), "alarms");
    EXPECT_EQ(files.contents.value(QStringLiteral("/cache/Velarin/logos/a.png")), "logo");
    EXPECT_FALSE(files.exists(QStringLiteral("/data/Ardevox")));
    EXPECT_FALSE(files.exists(QStringLiteral("/data/alarms.json")));
    EXPECT_FALSE(files.exists(QStringLiteral("/cache/Lumarin")));
    EXPECT_EQ(log.lines(), (QStringList{ logged(QStringLiteral("migrated dati: Ardevox → Velarin")),
                               logged(QStringLiteral("migrated sveglie: alarms.json → alarms.json")),
                               logged(QStringLiteral("migrated loghi: Lumarin → Velarin")),
                               logged(QStringLiteral("carried 1 settings over from Lumarin")) }));
}

TEST_F(MigrationTest, aFolderAtBothPlacesStaysAndTheOldOneIsLeftAlone)
{
    files.folders = { QStringLiteral("/data/Ardevox"), QStringLiteral("/data/Velarin") };
    files.contents[QStringLiteral("/data/Ardevox/podcasts.json")] = "old";
    files.contents[QStringLiteral("/data/Velarin/podcasts.json")] = "new";
    const CapturedLog log;

    run();

    EXPECT_EQ(files.contents.value(QStringLiteral("/data/Ardevox/podcasts.json")), "old");
    EXPECT_EQ(files.contents.value(QStringLiteral("/data/Velarin/podcasts.json")), "new");
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(MigrationTest, alarmsInsideTheMovedFolderWinOverTheFileBeside)
{
    files.folders = { QStringLiteral("/data/Ardevox") };
    files.contents[QStringLiteral("/data/Ardevox/alarms.json")] = "inside";
    files.contents[QStringLiteral("/data/alarms.json")] = "beside";

    run();

    EXPECT_EQ(files.contents.value(QStringLiteral("/data/Velarin/alarms.json")), "inside");
    EXPECT_EQ(files.contents.value(QStringLiteral("/data/alarms.json")), "beside");
}

TEST_F(MigrationTest, aFailedMoveIsToldAndTheRestGoesOn)
{
    files.folders = { QStringLiteral("/data/Ardevox"), QStringLiteral("/cache/Lumarin") };
    files.immovable = { QStringLiteral("/data/Ardevox") };
    const CapturedLog log;

    run();

    EXPECT_TRUE(files.exists(QStringLiteral("/data/Ardevox")));
    EXPECT_TRUE(files.exists(QStringLiteral("/data/Velarin")));
    EXPECT_FALSE(files.exists(QStringLiteral("/cache/Lumarin")));
    EXPECT_EQ(log.lines(), (QStringList{ logged(QStringLiteral("migration of dati failed: cannot move")),
                               logged(QStringLiteral("migrated loghi: Lumarin → Velarin")) }));
}

TEST_F(MigrationTest, formerSettingsAreCarriedOverUnlessTheyAreThereAlready)
{
    files.contents[formerSettings] =
        R"({"theme_mode":"dark","output_volume":0.5,"favorites":["a"],"last_sync_date":{"date":3.5}})";
    defaults.setString(QStringLiteral("theme_mode"), QStringLiteral("light"));
    const CapturedLog log;

    run();

    EXPECT_EQ(defaults.string(QStringLiteral("theme_mode")), QStringLiteral("light"));
    EXPECT_EQ(defaults.real(QStringLiteral("output_volume")), 0.5);
    EXPECT_EQ(defaults.strings(QStringLiteral("favorites")), QStringList{ QStringLiteral("a") });
    EXPECT_TRUE(defaults.date(QStringLiteral("last_sync_date")));
    EXPECT_EQ(log.lines(), QStringList{ logged(QStringLiteral("carried 3 settings over from Lumarin")) });
    EXPECT_TRUE(files.contents.contains(formerSettings));
}

TEST_F(MigrationTest, aSecondStartCopiesNoSettingEvenIfTheFormerOnesChanged)
{
    files.contents[formerSettings] = R"({"theme_mode":"dark"})";
    run();
    files.contents[formerSettings] = R"({"theme_mode":"light","auto_reconnect":false})";
    defaults.remove(QStringLiteral("theme_mode"));

    run();

    EXPECT_FALSE(defaults.contains(QStringLiteral("theme_mode")));
    EXPECT_FALSE(defaults.contains(QStringLiteral("auto_reconnect")));
}

TEST_F(MigrationTest, theRunIsMarkedBeforeTheFormerSettingsAreRead)
{
    files.contents[formerSettings] = R"({"theme_mode":"dark"})";

    run();

    EXPECT_EQ(defaults.writes, (QStringList{ migratedKey, QStringLiteral("theme_mode") }));
    EXPECT_EQ(defaults.boolean(migratedKey), true);
}

TEST_F(MigrationTest, aMarkThatIsNoTrueBooleanCountsAsNone)
{
    files.contents[formerSettings] = R"({"theme_mode":"dark"})";
    for (const QJsonValue& mark : { QJsonValue(false), QJsonValue(1), QJsonValue(QStringLiteral("true")) }) {
        defaults.stored = { { migratedKey, mark } };
        run();
        EXPECT_EQ(defaults.string(QStringLiteral("theme_mode")), QStringLiteral("dark"));
        EXPECT_EQ(defaults.boolean(migratedKey), true);
    }
}

TEST_F(MigrationTest, formerSettingsThatAreEmptyDamagedOrTooLargeAreNone)
{
    for (const QByteArray& content : { QByteArray("{}"), QByteArray("[1]"), QByteArray("{\"theme_mode\":"),
             QByteArray("{\"a\":1}") + QByteArray(8 * 1024 * 1024, ' ') }) {
        files.contents[formerSettings] = content;
        defaults.stored = {};
        const CapturedLog log;
        run();
        EXPECT_EQ(defaults.stored.keys(), QStringList{ migratedKey }) << content.left(20).constData();
        EXPECT_TRUE(log.lines().isEmpty());
    }
}

}
