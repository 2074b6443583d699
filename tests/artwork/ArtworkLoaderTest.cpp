// SPDX-License-Identifier: GPL-3.0-or-later
#include "artwork/ArtworkLoader.h"

#include "artwork/Monogram.h"
#include "catalogue/Station.h"
#include "support/ManualExecutor.h"

#include <gmock/gmock.h>

using namespace velarin;
using namespace velarin::test;
using namespace testing;

namespace {

Station stationNamed(const QString& name, const QString& id = QStringLiteral("one"))
{
    Station station;
    station.id = id;
    station.name = name;
    return station;
}

class ArtworkLoaderTest : public Test
{
protected:
    QImage imageOf(const Station& station)
    {
        QImage answer;
        const Task task = loader.image(station, [&answer](const QImage& image) { answer = image; });
        executor.runAll();
        return answer;
    }

    ManualExecutor executor;
    ArtworkLoader loader{ executor };
};

}

TEST_F(ArtworkLoaderTest, aStationGetsTheMonogramOfItsName)
{
    EXPECT_EQ(imageOf(stationNamed(QStringLiteral("Radio Uno"))), Monogram::image(u"Radio Uno", 512));
}

TEST_F(ArtworkLoaderTest, theAnswerNeverComesFromInsideTheCall)
{
    const Station station = stationNamed(QStringLiteral("Radio Uno"));
    static_cast<void>(imageOf(station));
    int answers = 0;
    const Task task = loader.image(station, [&answers](const QImage&) { ++answers; });
    EXPECT_EQ(answers, 0);
    executor.runAll();
    EXPECT_EQ(answers, 1);
}

TEST_F(ArtworkLoaderTest, aCancelledRequestIsNotAnswered)
{
    int answers = 0;
    Task task = loader.image(stationNamed(QStringLiteral("Radio Uno")), [&answers](const QImage&) { ++answers; });
    task.cancel();
    executor.runAll();
    EXPECT_EQ(answers, 0);
}

TEST_F(ArtworkLoaderTest, thePictureIsKeptByIdThoughTheNameChanged)
{
    const QImage first = imageOf(stationNamed(QStringLiteral("Radio Uno")));
    EXPECT_EQ(imageOf(stationNamed(QStringLiteral("Radio Due"))), first);
    EXPECT_EQ(
        imageOf(stationNamed(QStringLiteral("Radio Due"), QStringLiteral("two"))), Monogram::image(u"Radio Due", 512));
}

TEST_F(ArtworkLoaderTest, theMemoryForPicturesIsBounded)
{
    for (int number = 0; number < 40; ++number)
        static_cast<void>(imageOf(stationNamed(QStringLiteral("Radio"), QString::number(number))));
    const qsizetype bytes = loader.kept() * ArtworkLoader::side * ArtworkLoader::side * 4;
    EXPECT_GT(loader.kept(), 1);
    EXPECT_LE(loader.kept(), ArtworkLoader::mostPictures);
    EXPECT_LE(bytes, ArtworkLoader::mostBytes);
}
