// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/MprisArtwork.h"

#include "platform/freedesktop/MprisTest.h"
#include "support/ManualExecutor.h"

#include <QDBusArgument>
#include <QDir>
#include <QTemporaryDir>

#include <thread>

namespace velarin::test {

class MprisArtworkTest : public testing::Test
{
protected:
    static QImage square(int side, Qt::GlobalColor color)
    {
        QImage image(side, side, QImage::Format_ARGB32);
        image.fill(color);
        return image;
    }

    QStringList files() const { return QDir(folder).entryList(QDir::Files | QDir::Hidden); }

    QTemporaryDir parent;
    QString folder{ parent.filePath(QStringLiteral("velarin")) };
    ManualExecutor executor;
    int changes{ 0 };
    std::unique_ptr<MprisArtwork> artwork{ std::make_unique<MprisArtwork>(executor, folder, [this] { ++changes; }) };
};

TEST_F(MprisArtworkTest, theAddressIsThereOnlyWithTheFile)
{
    artwork->show(square(64, Qt::red));
    EXPECT_TRUE(artwork->address().isEmpty());
    EXPECT_EQ(changes, 0);
    executor.runAll();
    EXPECT_EQ(changes, 1);
    ASSERT_TRUE(artwork->address().isLocalFile());
    EXPECT_EQ(QImage(artwork->address().toLocalFile()).pixelColor(10, 10), QColor(Qt::red));
    EXPECT_TRUE(artwork->address().toLocalFile().startsWith(folder));
}

TEST_F(MprisArtworkTest, theSamePictureIsNotEncodedTwice)
{
    artwork->show(square(64, Qt::red));
    artwork->show(square(64, Qt::red));
    EXPECT_EQ(executor.waiting(), 1U);
    executor.runAll();
    artwork->show(square(64, Qt::red));
    EXPECT_EQ(executor.waiting(), 0U);
    EXPECT_FALSE(artwork->address().isEmpty());
}

TEST_F(MprisArtworkTest, anotherPictureHasAnotherNameAndTheFormerFileGoes)
{
    artwork->show(square(64, Qt::red));
    executor.runAll();
    const QUrl former = artwork->address();
    artwork->show(square(64, Qt::blue));
    EXPECT_TRUE(artwork->address().isEmpty()) << "the former picture is not shown beside the new title";
    executor.runAll();
    EXPECT_NE(artwork->address(), former);
    EXPECT_EQ(files(), QStringList{ artwork->address().fileName() });
}

TEST_F(MprisArtworkTest, onlyTheLastOfSeveralPicturesStays)
{
    artwork->show(square(64, Qt::red));
    artwork->show(square(64, Qt::green));
    artwork->show(square(64, Qt::blue));
    EXPECT_EQ(executor.waiting(), 1U) << "one job at a time";
    executor.runAll();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(QImage(artwork->address().toLocalFile()).pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(files().size(), 1);
}

TEST_F(MprisArtworkTest, withoutAPictureTheFileGoes)
{
    artwork->show(square(64, Qt::red));
    executor.runAll();
    artwork->show(QImage());
    executor.runAll();
    EXPECT_TRUE(artwork->address().isEmpty());
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(MprisArtworkTest, aLargePictureIsBroughtDownToWhatADesktopShows)
{
    artwork->show(square(2000, Qt::red));
    executor.runAll();
    EXPECT_EQ(QImage(artwork->address().toLocalFile()).size(), QSize(512, 512));
}

TEST_F(MprisArtworkTest, whatAFormerRunLeftIsRemoved)
{
    QDir().mkpath(folder);
    QFile stale(folder + QStringLiteral("/stale.png"));
    ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
    stale.close();
    artwork->show(square(64, Qt::red));
    executor.runAll();
    EXPECT_FALSE(stale.exists());
}

TEST_F(MprisArtworkTest, theFolderGoesAtTheEnd)
{
    artwork->show(square(64, Qt::red));
    executor.runAll();
    artwork.reset();
    EXPECT_FALSE(QDir(folder).exists());
}

TEST_F(MprisArtworkTest, aFolderThatCannotBeMadeGivesNoAddress)
{
    QFile inTheWay(folder);
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    artwork->show(square(64, Qt::red));
    executor.runAll();
    EXPECT_TRUE(artwork->address().isEmpty());
    EXPECT_EQ(changes, 0);
}

TEST_F(MprisArtworkTest, withoutARuntimeFolderNothingIsWritten)
{
    MprisArtwork homeless(executor, {}, [this] { ++changes; });
    homeless.show(square(64, Qt::red));
    EXPECT_EQ(executor.waiting(), 0U);
    EXPECT_TRUE(homeless.address().isEmpty());
}

TEST_F(MprisTest, thePictureIsToldWhenItsFileIsThere)
{
    NowPlaying item = radio();
    item.artwork = picture(Qt::red);
    controls->publish(item, NowPlayingState::Playing);
    const QString key = QStringLiteral("mpris:artUrl");
    ASSERT_TRUE(waitUntil([&] { return listener.changes.size() == 2; }));
    EXPECT_FALSE(qdbus_cast<QVariantMap>(listener.changes[0].value(QStringLiteral("Metadata"))).contains(key));
    const QUrl address(metadata().value(key).toString());
    EXPECT_TRUE(address.toLocalFile().startsWith(artworkFolder));
    EXPECT_EQ(QImage(address.toLocalFile()), item.artwork);
    controls->publish(item, NowPlayingState::Playing);
    settle();
    EXPECT_EQ(listener.changes.size(), 2U) << "the same picture again is no change";
}

TEST_F(MprisTest, nothingIsLeftOfAPictureThatIsUnderWayAtTheEnd)
{
    NowPlaying item = radio();
    item.artwork = picture(Qt::red).scaled(2000, 2000);
    controls.reset();
    auto pool = std::make_unique<PoolExecutor>(2);
    for (int run = 0; run < 20; ++run) {
        MprisControls passing(bus.connect(), clock, *pool, artworkFolder);
        passing.publish(item, NowPlayingState::Playing);
        std::this_thread::sleep_for(std::chrono::milliseconds(run));
    }
    // Waits for the jobs.
    pool.reset();
    EXPECT_FALSE(QDir(artworkFolder).exists());
}

}
