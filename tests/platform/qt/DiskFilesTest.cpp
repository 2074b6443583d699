// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/DiskFiles.h"

#include "support/WaitUntil.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <memory>
#include <thread>

namespace velarin {

namespace {

using test::waitUntil;

constexpr qint64 bound = 1024;

class DiskFilesTest : public testing::Test
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
    void writeText(const QString& path, const QByteArray& text)
    {
        files->write(path, [text] { return text; });
    }
    // Sets a FIFO up, at which a careless open() would wait for ever.
    QString fifo()
    {
        const QString path = at("fifo");
        EXPECT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        return path;
    }

    QTemporaryDir sandbox;
    PoolExecutor readers{ 1 };
    std::unique_ptr<DiskFiles> files{ std::make_unique<DiskFiles>(readers) };
};

TEST_F(DiskFilesTest, aFileIsReadWhole)
{
    put(at("a"), QByteArray("uno\0due", 7));
    EXPECT_EQ(files->readNow(at("a"), bound), QByteArray("uno\0due", 7));
}

TEST_F(DiskFilesTest, anEmptyFileIsNotAMissingOne)
{
    put(at("empty"), "");
    EXPECT_EQ(files->readNow(at("empty"), bound), QByteArray());
    EXPECT_EQ(files->readNow(at("missing"), bound), std::nullopt);
}

TEST_F(DiskFilesTest, aFileOfTheBoundIsReadAndOneOfAByteMoreIsAbsent)
{
    put(at("full"), QByteArray(bound, 'x'));
    put(at("over"), QByteArray(bound + 1, 'x'));
    EXPECT_EQ(files->readNow(at("full"), bound), QByteArray(bound, 'x'));
    EXPECT_EQ(files->readNow(at("over"), bound), std::nullopt);
}

TEST_F(DiskFilesTest, aFileThatGivesMoreThanItsSizeTellsIsBoundedAsWell)
{
    // Files of /proc have the size zero.
    EXPECT_EQ(files->readNow(QStringLiteral("/proc/self/status"), 8), std::nullopt);
}

TEST_F(DiskFilesTest, whatIsNoRegularFileIsAbsentAndNeverWaitedFor)
{
    EXPECT_EQ(files->readNow(fifo(), bound), std::nullopt);
    EXPECT_EQ(files->readNow(sandbox.path(), bound), std::nullopt);
    EXPECT_EQ(files->readNow(QStringLiteral("/dev/zero"), bound), std::nullopt);
}

TEST_F(DiskFilesTest, aSymbolicLinkIsFollowed)
{
    put(at("target"), "contenuto");
    ASSERT_TRUE(QFile::link(at("target"), at("link")));
    ASSERT_TRUE(QFile::link(at("nowhere"), at("dangling")));
    EXPECT_EQ(files->readNow(at("link"), bound), QByteArray("contenuto"));
    EXPECT_EQ(files->readNow(at("dangling"), bound), std::nullopt);
}

TEST_F(DiskFilesTest, aCompiledInResourceIsReadUnderItsBound)
{
    EXPECT_EQ(files->readNow(QStringLiteral(":/platform/sample.txt"), bound), QByteArray("campione\n"));
    EXPECT_EQ(files->readNow(QStringLiteral(":/platform/sample.txt"), 3), std::nullopt);
    EXPECT_EQ(files->readNow(QStringLiteral(":/platform/missing"), bound), std::nullopt);
    EXPECT_TRUE(files->exists(QStringLiteral(":/platform/sample.txt")));
}

TEST_F(DiskFilesTest, aReadAnswersInALaterTurn)
{
    put(at("a"), "uno");
    std::optional<QByteArray> answer;
    bool answered = false;
    const Task task = files->read(at("a"), bound, [&](std::optional<QByteArray> bytes) {
        answer = std::move(bytes);
        answered = true;
    });
    EXPECT_FALSE(answered);
    ASSERT_TRUE(waitUntil([&answered] { return answered; }));
    EXPECT_EQ(answer, QByteArray("uno"));
}

TEST_F(DiskFilesTest, aReadOfAMissingFileAnswersAbsent)
{
    std::optional<QByteArray> answer = QByteArray("before");
    const Task task =
        files->read(at("missing"), bound, [&](std::optional<QByteArray> bytes) { answer = std::move(bytes); });
    EXPECT_TRUE(waitUntil([&answer] { return !answer.has_value(); }));
}

TEST_F(DiskFilesTest, aCancelledReadIsNotAnswered)
{
    put(at("a"), "uno");
    int answers = 0;
    files->read(at("a"), bound, [&answers](const auto&) { answers += 10; }).cancel();
    const Task second = files->read(at("a"), bound, [&answers](const auto&) { ++answers; });
    ASSERT_TRUE(waitUntil([&answers] { return answers > 0; }));
    EXPECT_EQ(answers, 1);
}

TEST_F(DiskFilesTest, aWriteIsOnDiskAfterTheFlush)
{
    writeText(at("a"), "uno");
    files->flush();
    EXPECT_EQ(content(at("a")), "uno");
}

TEST_F(DiskFilesTest, aWriteReachesTheDiskWithoutAFlushWithinATenthOfASecond)
{
    QElapsedTimer time;
    time.start();
    writeText(at("a"), "uno");
    ASSERT_TRUE(waitUntil([this] { return content(at("a")) == "uno"; }));
    // 100 ms on an idle machine; the tests share theirs.
    EXPECT_LT(time.elapsed(), 1000);
}

TEST_F(DiskFilesTest, theProducerRunsOffTheMainThread)
{
    std::atomic<QThread*> producedOn = nullptr;
    files->write(at("a"), [&producedOn] {
        producedOn = QThread::currentThread();
        return QByteArray();
    });
    files->flush();
    EXPECT_NE(producedOn.load(), nullptr);
    EXPECT_NE(producedOn.load(), QThread::currentThread());
}

TEST_F(DiskFilesTest, theLastWriteAskedForIsTheOneOnDisk)
{
    for (int round = 0; round < 200; ++round)
        writeText(at("a"), QByteArray::number(round));
    files->flush();
    EXPECT_EQ(content(at("a")), "199");
}

TEST_F(DiskFilesTest, aSlowWriteIsNotOvertakenByALaterOneOfItsPath)
{
    files->write(at("a"), [] {
        QThread::msleep(50);
        return QByteArray("slow");
    });
    QThread::msleep(10);
    writeText(at("a"), "fast");
    files->flush();
    EXPECT_EQ(content(at("a")), "fast");
}

TEST_F(DiskFilesTest, anotherPathDoesNotWaitForASlowOne)
{
    std::atomic<bool> hold = true;
    files->write(at("slow"), [&hold] {
        while (hold)
            std::this_thread::yield();
        return QByteArray("slow");
    });
    writeText(at("fast"), "fast");
    EXPECT_TRUE(waitUntil([this] { return content(at("fast")) == "fast"; }));
    hold = false;
    files->flush();
    EXPECT_EQ(content(at("slow")), "slow");
}

TEST_F(DiskFilesTest, readersNeverSeeAHalfWrittenFile)
{
    const QByteArray one(200'000, '1');
    const QByteArray two(200'000, '2');
    put(at("a"), one);
    for (int round = 0; round < 20; ++round) {
        writeText(at("a"), round % 2 ? one : two);
        const QByteArray seen = content(at("a"));
        ASSERT_TRUE(seen == one || seen == two);
    }
}

TEST_F(DiskFilesTest, nothingIsLeftBesideAWrittenFile)
{
    writeText(at("a"), "uno");
    files->flush();
    EXPECT_EQ(QDir(sandbox.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList(QStringLiteral("a")));
}

TEST_F(DiskFilesTest, destroyingTheFilesWritesWhatWasAskedFor)
{
    for (int file = 0; file < 20; ++file)
        writeText(at("a") + QString::number(file), "scritto");
    files.reset();
    for (int file = 0; file < 20; ++file)
        EXPECT_EQ(content(at("a") + QString::number(file)), "scritto");
}

TEST_F(DiskFilesTest, aWriteIntoAMissingFolderIsDroppedAndTheNextOneWorks)
{
    writeText(at("missing/a"), "uno");
    writeText(at("a"), "due");
    files->flush();
    EXPECT_FALSE(QFile::exists(at("missing/a")));
    EXPECT_EQ(content(at("a")), "due");
}

TEST_F(DiskFilesTest, whatIsNoRegularFileIsNeverReplaced)
{
    const QString pipe = fifo();
    ASSERT_TRUE(QDir().mkpath(at("folder")));
    writeText(pipe, "uno");
    writeText(at("folder"), "uno");
    files->flush();
    struct stat status
    {
    };
    ASSERT_EQ(stat(QFile::encodeName(pipe).constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
    EXPECT_TRUE(QFileInfo(at("folder")).isDir());
}

TEST_F(DiskFilesTest, writingThroughASymbolicLinkKeepsTheLink)
{
    put(at("target"), "prima");
    ASSERT_TRUE(QFile::link(at("target"), at("link")));
    writeText(at("link"), "dopo");
    files->flush();
    EXPECT_EQ(QFileInfo(at("link")).symLinkTarget(), at("target"));
    EXPECT_EQ(content(at("target")), "dopo");
}

TEST_F(DiskFilesTest, anUnreadableFileIsKeptBesideBeforeItIsFirstOverwritten)
{
    put(at("a.json"), "{ rotto");
    files->keepUnreadable(at("a.json"));
    EXPECT_FALSE(QFile::exists(at("a.json.unreadable")));
    writeText(at("a.json"), "[]");
    files->flush();
    EXPECT_EQ(content(at("a.json")), "[]");
    EXPECT_EQ(content(at("a.json.unreadable")), "{ rotto");
}

TEST_F(DiskFilesTest, theSecondWriteLeavesWhatWasKeptAlone)
{
    put(at("a.json"), "{ rotto");
    files->keepUnreadable(at("a.json"));
    writeText(at("a.json"), "[1]");
    files->flush();
    writeText(at("a.json"), "[2]");
    files->flush();
    EXPECT_EQ(content(at("a.json.unreadable")), "{ rotto");
}

TEST_F(DiskFilesTest, aLaterUnreadableFileTakesThePlaceOfTheFormerOne)
{
    put(at("a.json.unreadable"), "vecchio");
    put(at("a.json"), "nuovo");
    files->keepUnreadable(at("a.json"));
    writeText(at("a.json"), "[]");
    files->flush();
    EXPECT_EQ(content(at("a.json.unreadable")), "nuovo");
}

TEST_F(DiskFilesTest, anUnreadableFileThatIsGoneByThenHindersNothing)
{
    files->keepUnreadable(at("a.json"));
    writeText(at("a.json"), "[]");
    files->flush();
    EXPECT_EQ(content(at("a.json")), "[]");
    EXPECT_FALSE(QFile::exists(at("a.json.unreadable")));
}

TEST_F(DiskFilesTest, whatCannotBeKeptBesideIsNotOverwritten)
{
    put(at("a.json"), "{ rotto");
    ASSERT_TRUE(QDir().mkpath(at("a.json.unreadable/full")));
    files->keepUnreadable(at("a.json"));
    writeText(at("a.json"), "[]");
    files->flush();
    EXPECT_EQ(content(at("a.json")), "{ rotto");
}

TEST_F(DiskFilesTest, foldersAreMadeWithAllAboveThem)
{
    EXPECT_TRUE(files->makeFolder(at("a/b/c")));
    EXPECT_TRUE(files->makeFolder(at("a/b/c")));
    EXPECT_TRUE(files->exists(at("a/b/c")));
    put(at("file"), "");
    EXPECT_FALSE(files->makeFolder(at("file/inside")));
}

}

}
