// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/parts/MonogramProvider.h"
#include "screens/parts/PictureProvider.h"
#include "screens/parts/RoundedPicture.h"
#include "screens/parts/ShadowProvider.h"
#include "screens/parts/SymbolProvider.h"
#include "screens/parts/Symbols.h"

#include "artwork/Monogram.h"

#include <QFile>

#include <gmock/gmock.h>

using namespace velarin;
using namespace testing;

namespace {

template<typename Provider>
QImage asked(Provider& provider, const QString& id, int side)
{
    QSize size;
    return provider.requestImage(id, &size, side > 0 ? QSize(side, side) : QSize());
}

}

TEST(SymbolsTest, everyNameHasADrawing)
{
    for (const QString& name : Symbols::names()) {
        EXPECT_TRUE(QFile::exists(Symbols::path(name))) << qUtf8Printable(name);
        EXPECT_FALSE(Symbols::image(name, Qt::red, 16).isNull()) << qUtf8Printable(name);
    }
}

TEST(SymbolsTest, aNameThatIsNotInTheTableHasNone)
{
    EXPECT_EQ(Symbols::path(QStringLiteral("nothing")), QString());
    EXPECT_TRUE(Symbols::image(QStringLiteral("nothing"), Qt::red, 16).isNull());
}

TEST(SymbolsTest, aDrawingIsAllInTheInkAskedFor)
{
    SymbolProvider provider;
    const QImage image = asked(provider, QStringLiteral("heart.fill/ffff0000"), 32);
    EXPECT_EQ(image.size(), QSize(32, 32));
    EXPECT_EQ(image.pixelColor(16, 16), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(0, 31).alpha(), 0);
}

TEST(MonogramProviderTest, thePictureIsTheMonogramAtTheSizeShown)
{
    MonogramProvider provider;
    EXPECT_EQ(asked(provider, QStringLiteral("14/Radio%20Uno"), 140), Monogram::image(u"Radio Uno", 140));
}

TEST(MonogramProviderTest, aSmallPictureIsCutRounderThanItsOwnCorner)
{
    MonogramProvider provider;
    const QImage square = Monogram::image(u"Radio Uno", 46);
    const QImage rounder = asked(provider, QStringLiteral("9/Radio%20Uno"), 46);
    EXPECT_EQ(rounder.size(), square.size());
    EXPECT_LT(rounder.pixelColor(2, 2).alpha(), square.pixelColor(2, 2).alpha());
    EXPECT_EQ(rounder.pixelColor(23, 0).alpha(), 255);
}

TEST(MonogramProviderTest, aNameMayHoldAnything)
{
    MonogramProvider provider;
    EXPECT_EQ(asked(provider, QStringLiteral("0/A%2FB%20%23%3F%25"), 64), Monogram::image(u"A/B #?%", 64));
    EXPECT_EQ(asked(provider, QStringLiteral("0/"), 64), Monogram::image(u"", 64));
    EXPECT_EQ(asked(provider, QString(), 64).size(), QSize(64, 64));
}

TEST(MonogramProviderTest, whatIsKeptStaysWithinItsBytes)
{
    MonogramProvider provider;
    for (int number = 0; number < 60; ++number)
        static_cast<void>(asked(provider, QStringLiteral("14/Radio%1").arg(number), 400));
    EXPECT_GT(provider.keptBytes(), 0);
    EXPECT_LE(provider.keptBytes(), MonogramProvider::mostBytes);
}

TEST(PictureProviderTest, withoutAPictureThereIsNone)
{
    PictureProvider provider;
    EXPECT_TRUE(asked(provider, QStringLiteral("1/9"), 46).isNull());
}

TEST(PictureProviderTest, thePictureComesScaledAndRounded)
{
    PictureProvider provider;
    QImage picture(512, 512, QImage::Format_RGB32);
    picture.fill(Qt::green);
    provider.setPicture(picture);
    const QImage image = asked(provider, QStringLiteral("1/9"), 46);
    EXPECT_EQ(image.size(), QSize(46, 46));
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(23, 23), QColor(Qt::green));
}

TEST(ShadowProviderTest, aShadowFadesOutBeforeItsPictureEnds)
{
    for (const QStringView step : { u"art", u"pop", u"bar" }) {
        const auto thrown = shadow(step, true);
        ASSERT_TRUE(thrown.has_value());
        const QImage patch = shadowPatch(*thrown, 14);
        const int middle = patch.width() / 2;
        EXPECT_EQ(patch.width(), 2 * patchBorder(*thrown, 14) + 2);
        EXPECT_LE(patch.pixelColor(0, middle).alpha(), 2);
        EXPECT_LE(patch.pixelColor(middle, patch.height() - 1).alpha(), 4);
        EXPECT_NEAR(patch.pixelColor(middle, middle).alpha(), thrown->color.alpha(), thrown->color.alpha() / 4);
    }
}

TEST(ShadowProviderTest, aShadowThatNobodyKnowsIsNone)
{
    ShadowProvider provider;
    EXPECT_TRUE(asked(provider, QStringLiteral("moon/dark/14"), 0).isNull());
    EXPECT_FALSE(asked(provider, QStringLiteral("art/light/999999"), 0).isNull());
}
