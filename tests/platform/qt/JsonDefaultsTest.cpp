// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/JsonDefaults.h"

#include "platform/qt/DiskFiles.h"
#include "support/WaitUntil.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <memory>

namespace velarin {

namespace {

const QString key = QStringLiteral("connect_timeout_seconds");

class JsonDefaultsTest : public testing::Test
{
protected:
    void put(const QByteArray& content) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QByteArray onDisk() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(absent)");
    }
    QByteArray keptBeside() const
    {
        QFile file(path + QStringLiteral(".unreadable"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(absent)");
    }
    // The program ends and is started again.
    JsonDefaults& restart()
    {
        if (files)
            files->flush();
        defaults.reset();
        files = std::make_unique<DiskFiles>(readers);
        defaults = std::make_unique<JsonDefaults>(*files, path);
        return *defaults;
    }
    JsonDefaults& start() { return restart(); }

    QTemporaryDir sandbox;
    QString path{ sandbox.filePath(QStringLiteral("com.brenholt.velarin.json")) };
    PoolExecutor readers{ 1 };
    std::unique_ptr<DiskFiles> files;
    std::unique_ptr<JsonDefaults> defaults;
};

TEST_F(JsonDefaultsTest, withoutAFileNothingIsStoredAndNoFileIsMade)
{
    EXPECT_FALSE(start().contains(key));
    files->flush();
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(JsonDefaultsTest, theFirstSettingOfANewUserMakesTheFolder)
{
    path = sandbox.filePath(QStringLiteral("home/.config/com.brenholt.velarin.json"));
    start();
    EXPECT_FALSE(QFile::exists(sandbox.filePath(QStringLiteral("home"))));
    defaults->setInteger(key, 9);
    EXPECT_EQ(restart().integer(key), 9);
}

TEST_F(JsonDefaultsTest, everyTypeSurvivesARestart)
{
    const QDateTime date(QDate(2026, 11, 21), QTime(7, 30, 0, 250), Qt::UTC);
    JsonDefaults& before = start();
    before.setBoolean(QStringLiteral("boolean"), false);
    before.setInteger(QStringLiteral("integer"), (qint64(1) << 53) + 1);
    before.setReal(QStringLiteral("real"), 0.85);
    before.setString(QStringLiteral("string"), QStringLiteral("Città «\"\\\n»"));
    before.setStrings(QStringLiteral("strings"), { QStringLiteral("rb/1"), QString() });
    before.setDate(QStringLiteral("date"), date);
    before.setBytes(QStringLiteral("bytes"), QByteArray("\0\xFF", 2));
    const JsonDefaults& after = restart();
    EXPECT_EQ(after.boolean(QStringLiteral("boolean")), false);
    EXPECT_EQ(after.integer(QStringLiteral("integer")), (qint64(1) << 53) + 1);
    EXPECT_EQ(after.real(QStringLiteral("real")), 0.85);
    EXPECT_EQ(after.string(QStringLiteral("string")), QStringLiteral("Città «\"\\\n»"));
    EXPECT_EQ(after.strings(QStringLiteral("strings")), QStringList({ QStringLiteral("rb/1"), QString() }));
    EXPECT_EQ(after.date(QStringLiteral("date")), date);
    EXPECT_EQ(after.bytes(QStringLiteral("bytes")), QByteArray("\0\xFF", 2));
}

TEST_F(JsonDefaultsTest, aRealNumberThatIsWholeReadsAsBoth)
{
    start().setReal(QStringLiteral("output_volume"), 0.0);
    EXPECT_EQ(restart().real(QStringLiteral("output_volume")), 0.0);
    EXPECT_EQ(defaults->integer(QStringLiteral("output_volume")), 0);
}

TEST_F(JsonDefaultsTest, theFileHoldsDatesAndBytesAsObjects)
{
    start().setDate(QStringLiteral("date"), QDateTime(QDate(2001, 1, 1), QTime(0, 0, 1, 500), Qt::UTC));
    defaults->setBytes(QStringLiteral("bytes"), "abc");
    files->flush();
    const QJsonObject expected{ { QStringLiteral("date"), QJsonObject{ { QStringLiteral("date"), 1.5 } } },
        { QStringLiteral("bytes"), QJsonObject{ { QStringLiteral("data"), QStringLiteral("YWJj") } } } };
    EXPECT_EQ(QJsonDocument::fromJson(onDisk()).object(), expected);
}

TEST_F(JsonDefaultsTest, aChangeIsReadAtOnceAndOnDiskWithoutAFlush)
{
    QElapsedTimer time;
    time.start();
    start().setInteger(key, 12);
    EXPECT_EQ(defaults->integer(key), 12);
    ASSERT_TRUE(test::waitUntil([this] { return QJsonDocument::fromJson(onDisk()).object().value(key) == 12; }));
    // 100 ms on an idle machine; the tests share theirs.
    EXPECT_LT(time.elapsed(), 1000);
}

TEST_F(JsonDefaultsTest, theLastOfManyChangesIsOnDisk)
{
    start();
    for (int value = 0; value <= 500; ++value)
        defaults->setInteger(key, value);
    EXPECT_EQ(restart().integer(key), 500);
}

TEST_F(JsonDefaultsTest, whatIsRemovedIsGoneAfterARestart)
{
    start().setInteger(key, 8);
    defaults->setBoolean(QStringLiteral("auto_reconnect"), true);
    defaults->remove(key);
    EXPECT_FALSE(defaults->contains(key));
    EXPECT_FALSE(restart().contains(key));
    EXPECT_EQ(defaults->boolean(QStringLiteral("auto_reconnect")), true);
}

TEST_F(JsonDefaultsTest, storingAnEqualValueWritesNothing)
{
    put(R"({"connect_timeout_seconds":8})");
    start().setInteger(key, 8);
    defaults->remove(QStringLiteral("unknown"));
    files->flush();
    EXPECT_EQ(onDisk(), R"({"connect_timeout_seconds":8})");
}

TEST_F(JsonDefaultsTest, keysThatNobodyKnowsAreKept)
{
    put(R"({"a_later_version":{"x":[1,null]}})");
    start().setInteger(key, 8);
    files->flush();
    EXPECT_EQ(QJsonDocument::fromJson(onDisk()).object().value(QStringLiteral("a_later_version")),
        QJsonObject({ { QStringLiteral("x"), QJsonArray{ 1, QJsonValue::Null } } }));
}

TEST_F(JsonDefaultsTest, aValueOfAnotherTypeReadsAsAbsent)
{
    put(R"({"a":"1","b":1,"c":null,"d":[1],"e":{"date":"x"},"f":{"data":"!"},"g":1.5})");
    const JsonDefaults& read = start();
    EXPECT_EQ(read.integer(QStringLiteral("a")), std::nullopt);
    EXPECT_EQ(read.boolean(QStringLiteral("b")), std::nullopt);
    EXPECT_EQ(read.string(QStringLiteral("c")), std::nullopt);
    EXPECT_EQ(read.strings(QStringLiteral("d")), std::nullopt);
    EXPECT_EQ(read.date(QStringLiteral("e")), std::nullopt);
    EXPECT_EQ(read.bytes(QStringLiteral("f")), std::nullopt);
    EXPECT_EQ(read.integer(QStringLiteral("g")), std::nullopt);
}

class DamagedDefaultsTest : public JsonDefaultsTest, public testing::WithParamInterface<QByteArray>
{
};

TEST_P(DamagedDefaultsTest, aDamagedFileStartsEmptyAndIsKeptBeside)
{
    put(GetParam());
    EXPECT_FALSE(start().contains(key));
    files->flush();
    EXPECT_EQ(onDisk(), GetParam());
    defaults->setInteger(key, 8);
    EXPECT_EQ(restart().integer(key), 8);
    EXPECT_EQ(keptBeside(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Table, DamagedDefaultsTest,
    testing::Values(QByteArray(), QByteArray("{"), QByteArray("[]"), QByteArray("null"), QByteArray("{} x"),
        QByteArray("{\"connect_timeout_seconds\":12"), QByteArray(200'000, '['), QByteArray("\xFF\xFE{\0}\0", 6)));

TEST_F(JsonDefaultsTest, aFileOverTheBoundStartsEmptyAndIsKeptBeside)
{
    const QByteArray large = R"({"connect_timeout_seconds":12,"x":")" + QByteArray(8 * 1024 * 1024, 'x') + "\"}";
    put(large);
    EXPECT_FALSE(start().contains(key));
    defaults->setInteger(key, 8);
    files->flush();
    EXPECT_EQ(keptBeside().size(), large.size());
}

TEST_F(JsonDefaultsTest, theFormerDomainIsReadAndLeftAlone)
{
    put(R"({"theme_mode":"dark"})");
    DiskFiles disk(readers);
    const auto domain = JsonDefaults::readDomain(disk, path);
    ASSERT_TRUE(domain.has_value());
    EXPECT_EQ(domain->value(QStringLiteral("theme_mode")), QStringLiteral("dark"));
    EXPECT_EQ(onDisk(), R"({"theme_mode":"dark"})");
}

TEST_F(JsonDefaultsTest, aMissingOrDamagedFormerDomainIsAbsent)
{
    DiskFiles disk(readers);
    EXPECT_EQ(JsonDefaults::readDomain(disk, path), std::nullopt);
    put("[1]");
    EXPECT_EQ(JsonDefaults::readDomain(disk, path), std::nullopt);
}

}

}
