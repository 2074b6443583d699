// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/DiskFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <memory>

namespace velarin {

namespace {

class MoveTest : public testing::Test
{
protected:
    QString at(const char* name) const { return sandbox.filePath(QString::fromUtf8(name)); }

    static void put(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    static QByteArray content(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(absent)");
    }
    static QStringList names(const QString& folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    void makeTree(const QString& folder)
    {
        ASSERT_TRUE(QDir().mkpath(folder + QStringLiteral("/logos")));
        put(folder + QStringLiteral("/alarms.json"), "[]");
        put(folder + QStringLiteral("/logos/v2.png"), "png");
        ASSERT_TRUE(QFile::link(QStringLiteral("alarms.json"), folder + QStringLiteral("/link")));
    }
    bool move(const QString& from, const QString& to) { return files->move(from, to, error); }

    QTemporaryDir sandbox;
    PoolExecutor readers{ 1 };
    std::unique_ptr<DiskFiles> files{ std::make_unique<DiskFiles>(readers) };
    QString error;
};

TEST_F(MoveTest, aFileMovesWithinAFileSystem)
{
    put(at("a"), "uno");
    EXPECT_TRUE(move(at("a"), at("b"))) << qPrintable(error);
    EXPECT_EQ(content(at("b")), "uno");
    EXPECT_EQ(names(sandbox.path()), QStringList(QStringLiteral("b")));
}

TEST_F(MoveTest, aFolderMovesWithAllThatIsInIt)
{
    makeTree(at("Ardevox"));
    EXPECT_TRUE(move(at("Ardevox"), at("Velarin"))) << qPrintable(error);
    EXPECT_EQ(content(at("Velarin/logos/v2.png")), "png");
    EXPECT_FALSE(QFile::exists(at("Ardevox")));
}

TEST_F(MoveTest, nothingThatExistsIsEverReplaced)
{
    put(at("a"), "uno");
    put(at("b"), "due");
    EXPECT_FALSE(move(at("a"), at("b")));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(content(at("a")), "uno");
    EXPECT_EQ(content(at("b")), "due");
}

TEST_F(MoveTest, aDanglingLinkExistsToo)
{
    put(at("a"), "uno");
    ASSERT_TRUE(QFile::link(at("nowhere"), at("b")));
    EXPECT_FALSE(move(at("a"), at("b")));
    EXPECT_EQ(content(at("a")), "uno");
}

TEST_F(MoveTest, aMissingSourceAndAMissingFolderAreErrorsInWords)
{
    EXPECT_FALSE(move(at("missing"), at("b")));
    EXPECT_FALSE(error.isEmpty());
    error.clear();
    put(at("a"), "uno");
    EXPECT_FALSE(move(at("a"), at("missing/b")));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(content(at("a")), "uno");
}

TEST_F(MoveTest, whatWasWrittenBeforeMovesAlong)
{
    files->write(at("a"), [] { return QByteArray("appena scritto"); });
    EXPECT_TRUE(move(at("a"), at("b"))) << qPrintable(error);
    EXPECT_EQ(content(at("b")), "appena scritto");
}

// Shared memory is a file system of its own nearly everywhere.
class MoveAcrossTest : public MoveTest
{
protected:
    void SetUp() override
    {
        struct stat here
        {
        };
        struct stat there
        {
        };
        if (!elsewhere.isValid() || stat(QFile::encodeName(elsewhere.path()).constData(), &there) != 0 ||
            stat(QFile::encodeName(sandbox.path()).constData(), &here) != 0 || here.st_dev == there.st_dev)
            GTEST_SKIP() << "there is no second file system";
    }
    QString there(const char* name) const { return elsewhere.filePath(QString::fromUtf8(name)); }

    QTemporaryDir elsewhere{ QStringLiteral("/dev/shm/velarin-XXXXXX") };
};

TEST_F(MoveAcrossTest, aFileMovesAcrossFileSystems)
{
    put(at("alarms.json"), "[]");
    EXPECT_TRUE(move(at("alarms.json"), there("alarms.json"))) << qPrintable(error);
    EXPECT_EQ(content(there("alarms.json")), "[]");
    EXPECT_FALSE(QFile::exists(at("alarms.json")));
    EXPECT_EQ(names(elsewhere.path()), QStringList(QStringLiteral("alarms.json")));
}

TEST_F(MoveAcrossTest, aFolderMovesAcrossFileSystemsWithItsLinks)
{
    makeTree(at("Lumarin"));
    EXPECT_TRUE(move(at("Lumarin"), there("Velarin"))) << qPrintable(error);
    EXPECT_EQ(content(there("Velarin/logos/v2.png")), "png");
    EXPECT_EQ(content(there("Velarin/link")), "[]");
    EXPECT_TRUE(QFileInfo(there("Velarin/link")).isSymLink());
    EXPECT_FALSE(QFile::exists(at("Lumarin")));
    EXPECT_EQ(names(elsewhere.path()), QStringList(QStringLiteral("Velarin")));
}

TEST_F(MoveAcrossTest, aFolderThatCannotBeCopiedStaysWholeAndLeavesNothing)
{
    makeTree(at("Lumarin"));
    ASSERT_EQ(mkfifo(QFile::encodeName(at("Lumarin/fifo")).constData(), 0600), 0);
    EXPECT_FALSE(move(at("Lumarin"), there("Velarin")));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(content(at("Lumarin/alarms.json")), "[]");
    EXPECT_EQ(names(elsewhere.path()), QStringList());
}

TEST_F(MoveAcrossTest, whatABrokenMoveLeftIsNoHindrance)
{
    makeTree(at("Lumarin"));
    ASSERT_TRUE(QDir().mkpath(there("Velarin.partial/old")));
    EXPECT_TRUE(move(at("Lumarin"), there("Velarin"))) << qPrintable(error);
    EXPECT_EQ(names(elsewhere.path()), QStringList(QStringLiteral("Velarin")));
    EXPECT_FALSE(QFile::exists(there("Velarin/old")));
}

}

}
