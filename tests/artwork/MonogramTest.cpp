// SPDX-License-Identifier: GPL-3.0-or-later
#include "artwork/Monogram.h"

#include "base/StableHash.h"

#include <QRect>

#include <gmock/gmock.h>

#include <thread>

using namespace velarin;
using namespace testing;

namespace {

// White ink on the gradient, which never comes near white.
bool isInk(QRgb pixel)
{
    return qRed(pixel) > 235 && qGreen(pixel) > 235 && qBlue(pixel) > 235;
}

QRect inkOf(const QImage& picture)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (isInk(picture.pixel(x, y)))
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

double distance(const QColor& left, const QColor& right)
{
    return std::abs(left.redF() - right.redF()) + std::abs(left.greenF() - right.greenF()) +
           std::abs(left.blueF() - right.blueF());
}

}

TEST(MonogramLetters, fourWordsGiveTheInitialsOfTheFirstThree)
{
    EXPECT_EQ(Monogram::letters(u"Radio Monte Carlo Italia"), u"RMC");
}

TEST(MonogramLetters, aDecimalNumberSplitsAtItsPoint)
{
    EXPECT_EQ(Monogram::letters(u"Radio 102.5"), u"R15");
}

TEST(MonogramLetters, hyphenAndFullStopSeparateAsABlankDoes)
{
    EXPECT_EQ(Monogram::letters(u"Rock-FM"), u"RF");
    EXPECT_EQ(Monogram::letters(u"R.D.S."), u"RDS");
    EXPECT_EQ(Monogram::letters(u"  Radio   Uno "), u"RU");
}

TEST(MonogramLetters, onlyTheBlankItselfSeparatesOfTheWhiteSpace)
{
    EXPECT_EQ(Monogram::letters(u"Radio\u00A0Uno\tDue"), u"R");
}

TEST(MonogramLetters, punctuationOnlyIsAQuestionMark)
{
    EXPECT_EQ(Monogram::letters(u"(*) & --"), u"?");
}

TEST(MonogramLetters, anEmptyNameIsAQuestionMark)
{
    EXPECT_EQ(Monogram::letters(u""), u"?");
}

TEST(MonogramLetters, aPieceThatBeginsWithAnAmpersandOrABracketDropsOut)
{
    EXPECT_EQ(Monogram::letters(u"Jazz & Blues (Roma) Live"), u"JBL");
}

TEST(MonogramLetters, theyAreUpperCase)
{
    EXPECT_EQ(Monogram::letters(u"èra nuova"), u"ÈN");
}

TEST(MonogramLetters, upperCasingMayYieldTwoLetters)
{
    EXPECT_EQ(Monogram::letters(u"ßeta"), u"SS");
}

TEST(MonogramLetters, anAccentInTwoCodePointsStaysWithItsLetter)
{
    EXPECT_EQ(Monogram::letters(u"e\u0301poca"), QStringView(u"E\u0301"));
}

TEST(MonogramLetters, lettersOfEveryScriptCountAndThoseBeyondTheBasicPlaneToo)
{
    EXPECT_EQ(Monogram::letters(u"Радио Москва"), u"РМ");
    EXPECT_EQ(Monogram::letters(u"日本 ラジオ"), u"日ラ");
    EXPECT_EQ(Monogram::letters(u"\U00010428x"), QStringView(u"\U00010400"));
    EXPECT_EQ(Monogram::letters(u"\U0001F600 Uno"), u"U");
}

TEST(MonogramColors, anEmptyNameHasTheHueZero)
{
    EXPECT_EQ(Monogram::colors(u"").first, QColor::fromHsvF(0.0F, 0.55F, 0.72F).toRgb());
    EXPECT_EQ(Monogram::colors(u"").second, QColor::fromHsvF(28.0F / 360.0F, 0.7F, 0.42F).toRgb());
}

TEST(MonogramColors, theHueIsTheLowBitsOfTheHashModuloTheCircle)
{
    const QString name = QStringLiteral("Radio Italia");
    const auto bits = static_cast<quint32>(javaHashCode(name)) & 0xFFFFFFU;
    EXPECT_EQ(Monogram::colors(name).first.hsvHue(), static_cast<int>(bits % 360U));
}

TEST(MonogramColors, theSecondHueGoesRoundTheCircle)
{
    // "a" to "zz" cover every hue; all of them stay on the circle, 28 degrees on.
    for (char16_t first = u'a'; first <= u'z'; ++first) {
        for (char16_t second = u'a'; second <= u'z'; ++second) {
            const QString name = QString(QChar(first)) + QChar(second);
            const Monogram::Colors colors = Monogram::colors(name);
            const double turn = std::fmod(colors.second.hsvHueF() - colors.first.hsvHueF() + 1.0, 1.0);
            ASSERT_NEAR(turn, 28.0 / 360.0, 0.002) << qUtf8Printable(name);
        }
    }
}

TEST(MonogramColors, namesThatDifferInCaseOnlyDifferInColourAndShareTheirLetters)
{
    EXPECT_NE(Monogram::colors(u"Radio Uno"), Monogram::colors(u"RADIO UNO"));
    EXPECT_EQ(Monogram::letters(u"Radio Uno"), Monogram::letters(u"RADIO UNO"));
}

TEST(MonogramImage, theCornersAreTransparentAndTheEdgesAreNot)
{
    const QImage picture = Monogram::image(u"Radio Uno", 128);
    EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(picture.pixel(127, 127)), 0);
    EXPECT_EQ(qAlpha(picture.pixel(64, 0)), 255);
    EXPECT_EQ(qAlpha(picture.pixel(0, 64)), 255);
}

TEST(MonogramImage, theCornerIsAnEighthOfTheSide)
{
    const QImage picture = Monogram::image(u"Radio Uno", 160);
    EXPECT_EQ(qAlpha(picture.pixel(20, 0)), 255);
    EXPECT_LT(qAlpha(picture.pixel(12, 0)), 255);
}

TEST(MonogramImage, theGradientRunsFromTheTopLeftToTheBottomRight)
{
    const QImage picture = Monogram::image(u"Radio Uno", 512);
    const Monogram::Colors colors = Monogram::colors(u"Radio Uno");
    EXPECT_LT(distance(picture.pixelColor(24, 24), colors.first), 0.1);
    EXPECT_LT(distance(picture.pixelColor(487, 487), colors.second), 0.1);
    EXPECT_LT(distance(picture.pixelColor(24, 487), picture.pixelColor(487, 24)), 0.05);
}

TEST(MonogramImage, theInkStandsInTheMiddle)
{
    for (const QStringView name : { u"J", u"Radio", u"Lady Q", u"gy", u"Radio Monte Carlo" }) {
        const QRect ink = inkOf(Monogram::image(name, 512));
        EXPECT_NEAR(ink.center().x(), 255.5, 2.0) << name.toUtf8().constData();
        EXPECT_NEAR(ink.center().y(), 255.5, 2.0) << name.toUtf8().constData();
    }
}

TEST(MonogramImage, threeLettersAreThreeQuartersTheSizeOfTwo)
{
    const int two = inkOf(Monogram::image(u"H H", 512)).height();
    const int three = inkOf(Monogram::image(u"H H H", 512)).height();
    EXPECT_NEAR(static_cast<double>(three) / two, 0.75, 0.03);
}

TEST(MonogramImage, aSharpSStaysAtTheLargerSize)
{
    const int sharp = inkOf(Monogram::image(u"ß", 512)).height();
    const int two = inkOf(Monogram::image(u"S S", 512)).height();
    EXPECT_EQ(sharp, two);
}

TEST(MonogramImage, everySideHasTheSameProportions)
{
    const QRect small = inkOf(Monogram::image(u"Radio Uno", 64));
    const QRect large = inkOf(Monogram::image(u"Radio Uno", 512));
    EXPECT_NEAR(small.width() / 64.0, large.width() / 512.0, 0.04);
    EXPECT_NEAR(small.height() / 64.0, large.height() / 512.0, 0.04);
    const QColor near = Monogram::image(u"Radio Uno", 64).pixelColor(8, 32);
    EXPECT_LT(distance(near, Monogram::image(u"Radio Uno", 512).pixelColor(64, 256)), 0.05);
}

TEST(MonogramImage, theSameNameIsTheSamePicture)
{
    EXPECT_EQ(Monogram::image(u"Radio Uno", 96), Monogram::image(u"Radio Uno", 96));
}

TEST(MonogramImage, itCanBeMadeOnAnyThread)
{
    const QImage here = Monogram::image(u"Radio Uno", 96);
    QImage there;
    std::thread([&there] { there = Monogram::image(u"Radio Uno", 96); }).join();
    EXPECT_EQ(here, there);
}

TEST(MonogramImage, aSideThatCannotBeIsATransparentPixel)
{
    for (const int side : { 0, -5, 2'000'000 }) {
        const QImage picture = Monogram::image(u"Radio Uno", side);
        EXPECT_EQ(picture.size(), QSize(1, 1));
        EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0);
    }
}

TEST(MonogramImage, aNameOfAMillionLettersIsDrawnAsAnyOther)
{
    EXPECT_EQ(Monogram::image(QString(1'000'000, u'x'), 64).size(), QSize(64, 64));
}
