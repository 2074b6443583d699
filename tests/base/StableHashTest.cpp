// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/StableHash.h"

#include <QString>

#include <gmock/gmock.h>

#include <limits>

namespace velarin {

namespace {

TEST(StableHashTest, theEmptyTextGivesZero)
{
    EXPECT_EQ(javaHashCode(u""), 0);
}

TEST(StableHashTest, oneUnitGivesItsValue)
{
    EXPECT_EQ(javaHashCode(u"a"), 97);
}

TEST(StableHashTest, laterUnitsWeighLess)
{
    EXPECT_EQ(javaHashCode(u"ab"), 97 * 31 + 98);
    EXPECT_EQ(javaHashCode(u"hello"), 99162322);
}

TEST(StableHashTest, differentTextsMayShareAHash)
{
    EXPECT_EQ(javaHashCode(u"Aa"), javaHashCode(u"BB"));
}

TEST(StableHashTest, aLongTextWrapsAroundInThirtyTwoBits)
{
    EXPECT_EQ(javaHashCode(u"zzzzzzz"), 215481018);
    EXPECT_EQ(javaHashCode(u"polygenelubricants"), std::numeric_limits<qint32>::min());
}

TEST(StableHashTest, aCharacterBeyondTheBasicPlaneCountsAsItsTwoSurrogates)
{
    EXPECT_EQ(javaHashCode(u"\U0001F3B5"), 0xD83C * 31 + 0xDFB5);
}

TEST(StableHashTest, anAccentedLetterCountsAsOneUnitAndNotAsItsBytes)
{
    EXPECT_EQ(javaHashCode(u"\u00e8"), 0xE8);
}

TEST(StableHashTest, aNullUnitCounts)
{
    EXPECT_EQ(javaHashCode(QString(QChar(u'\0')) + QChar(u'a')), 97);
    EXPECT_EQ(javaHashCode(QString(QChar(u'a')) + QChar(u'\0')), 97 * 31);
}

}

}
