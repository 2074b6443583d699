// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/TextFolding.h"

#include <QStringList>

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace velarin {

namespace {

struct Folding
{
    QString text;
    QString expected;
};

void PrintTo(const Folding& row, std::ostream* out)
{
    *out << qPrintable(row.text) << " -> " << qPrintable(row.expected);
}

class FoldedTest : public testing::TestWithParam<Folding>
{
};

TEST_P(FoldedTest, foldsCaseMarksAndWidthAndNothingElse)
{
    EXPECT_EQ(folded(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, FoldedTest,
    testing::Values(Folding{ QStringLiteral("Radio UNO"), QStringLiteral("radio uno") },
        Folding{ QStringLiteral("Perché"), QStringLiteral("perche") },
        Folding{ QStringLiteral("Perche\u0301"), QStringLiteral("perche") },
        Folding{ QStringLiteral("ĄČĘÜÑÇ"), QStringLiteral("aceunc") },
        // A stroke is no mark: these letters do not decompose.
        Folding{ QStringLiteral("Łódź Øst"), QStringLiteral("łodz øst") },
        Folding{ QStringLiteral("Straße"), QStringLiteral("strasse") },
        Folding{ QStringLiteral("STRA\u1E9EE"), QStringLiteral("strasse") },
        Folding{ QStringLiteral("ΣΊΣΥΦΟΣ"), QStringLiteral("σισυφοσ") },
        Folding{ QStringLiteral("σίσυφος"), QStringLiteral("σισυφοσ") },
        Folding{ QStringLiteral("İstanbul"), QStringLiteral("istanbul") },
        // Without a locale the dotless i is a letter of its own.
        Folding{ QStringLiteral("ıI"), QStringLiteral("ıi") },
        // Full-width letters, digits, signs and the ideographic blank.
        Folding{ QStringLiteral("ＲＡＤＩＯ　１０１！"), QStringLiteral("radio 101!") },
        // Half-width katakana, with its voiced sound mark, which is a mark like any other.
        Folding{ QStringLiteral("ﾗｼﾞｵ"), QStringLiteral("ラシオ") },
        // Width alone: the macron and the jamo keep their other compatibility forms.
        Folding{ QStringLiteral("\uFFE3"), QStringLiteral("\u00AF") },
        Folding{ QStringLiteral("\uFFA1"), QStringLiteral("\u3131") },
        // No other compatibility mapping: superscripts, fractions, circled letters and Roman signs stay.
        Folding{ QStringLiteral("m² ½ ⓐ №"), QStringLiteral("m² ½ ⓐ №") },
        // A ligature opens under full case folding.
        Folding{ QStringLiteral("\uFB01lm"), QStringLiteral("film") },
        Folding{ QStringLiteral("\U00010400"), QStringLiteral("\U00010428") },
        Folding{ QStringLiteral("A\u20DD\u0903b"), QStringLiteral("ab") },
        Folding{ QString(QChar(0xD800)), QString(QChar(0xD800)) }, Folding{ QString(), QString() }));

QString oneCodePoint(char32_t point)
{
    return QString::fromUcs4(&point, 1);
}

TEST(FoldedTextTest, aLeadingByteOrderMarkIsACharacterLikeAnyOther)
{
    const QString text = QString(QChar(0xFFFE)) + QStringLiteral("È");
    EXPECT_EQ(folded(text), QString(QChar(0xFFFE)) + QStringLiteral("e"));
}

TEST(FoldingProperties, foldingTwiceIsFoldingOnceForEveryCodePoint)
{
    for (char32_t point = 1; point <= 0x10FFFF; ++point) {
        if (point >= 0xD800 && point <= 0xDFFF)
            continue;
        const QString once = folded(oneCodePoint(point));
        ASSERT_EQ(folded(once), once) << "U+" << std::hex << static_cast<unsigned>(point);
    }
}

TEST(FoldingProperties, upperAndLowerCaseOfEveryLetterFoldAlike)
{
    // One code point for another: full upper-casing writes out an iota below, which folding drops as a mark.
    for (char32_t point = 1; point <= 0xFFFF; ++point) {
        // The dotless i has the upper case of another letter, and the iota below is a mark whose upper case is none.
        if (point == 0x131 || point == 0x345 || QChar::isSurrogate(point))
            continue;
        const QString letter = oneCodePoint(point);
        ASSERT_EQ(folded(oneCodePoint(QChar::toUpper(point))), folded(letter))
            << "U+" << std::hex << static_cast<unsigned>(point);
    }
}

// Random texts out of an alphabet in which the interesting code points are frequent; the seed is fixed.
class RandomTexts : public testing::Test
{
protected:
    QString next()
    {
        QString text;
        const auto length = std::uniform_int_distribution<int>(0, 24)(m_random);
        for (int unit = 0; unit < length; ++unit)
            text += m_alphabet[std::uniform_int_distribution<qsizetype>(0, m_alphabet.size() - 1)(m_random)];
        return text;
    }

private:
    QStringList m_alphabet{ QStringLiteral("a"), QStringLiteral("Z"), QStringLiteral("7"), QStringLiteral(" "),
        QStringLiteral("  "), QStringLiteral("\t"), QStringLiteral("\u00A0"), QStringLiteral("\u3000"),
        QStringLiteral("."), QStringLiteral("-"), QStringLiteral("è"), QStringLiteral("\u0301"), QStringLiteral("ß"),
        QStringLiteral("İ"), QStringLiteral("Ｒ"), QStringLiteral("ﾞ"), QStringLiteral("Я"), QStringLiteral("한"),
        QStringLiteral("\U0001F3B5"), QString(QChar(0xD83C)), QString(QChar(0xDFB5)) };
    std::mt19937 m_random{ 20261121 };
};

TEST_F(RandomTexts, normalizingTwiceIsNormalizingOnce)
{
    for (int round = 0; round < 5000; ++round) {
        const QString text = next();
        const QString once = normalizedForMatching(text);
        ASSERT_EQ(normalizedForMatching(once), once) << qPrintable(text);
    }
}

TEST_F(RandomTexts, whatIsNormalizedHoldsLettersDigitsAndSingleBlanksOnly)
{
    for (int round = 0; round < 5000; ++round) {
        const QString result = normalizedForMatching(next());
        ASSERT_TRUE(std::all_of(result.begin(), result.end(), [](QChar unit) {
            return (unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9') || unit == u' ';
        }));
        ASSERT_FALSE(result.contains(u"  "));
        ASSERT_EQ(result, result.trimmed());
    }
}

TEST_F(RandomTexts, normalizingDoesNotMindCase)
{
    for (int round = 0; round < 5000; ++round) {
        const QString text = next();
        ASSERT_EQ(normalizedForMatching(text.toUpper()), normalizedForMatching(text)) << qPrintable(text);
    }
}

class NormalizedTest : public testing::TestWithParam<Folding>
{
};

TEST_P(NormalizedTest, keepsPlainLettersDigitsAndSingleBlanks)
{
    EXPECT_EQ(normalizedForMatching(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, NormalizedTest,
    testing::Values(Folding{ QStringLiteral("R.T.L."), QStringLiteral("rtl") },
        Folding{ QStringLiteral("Radio-Uno"), QStringLiteral("radiouno") },
        Folding{ QStringLiteral("Rádio  NOVA!"), QStringLiteral("radio nova") },
        Folding{ QStringLiteral("radio nova"), QStringLiteral("radio nova") },
        Folding{ QStringLiteral("  RTL  102.5  "), QStringLiteral("rtl 1025") },
        Folding{ QStringLiteral("Радио Культура"), QString() }, Folding{ QStringLiteral("ラジオ"), QString() },
        // Only U+0020 parts words; a tab and a no-break blank go without leaving a gap.
        Folding{ QStringLiteral("Radio\tUno\u00A0Due"), QStringLiteral("radiounodue") },
        Folding{ QStringLiteral("ＦＭ　９９"), QStringLiteral("fm 99") },
        Folding{ QStringLiteral("Straße"), QStringLiteral("strasse") },
        Folding{ QStringLiteral("Łódź"), QStringLiteral("odz") }, Folding{ QStringLiteral(" . "), QString() },
        Folding{ QString(), QString() }));

TEST(EqualsIgnoringCaseTest, caseDoesNotCountAndDiacriticsDo)
{
    EXPECT_TRUE(equalsIgnoringCase(u"POP", u"pop"));
    EXPECT_TRUE(equalsIgnoringCase(u"CITTÀ", u"città"));
    EXPECT_TRUE(equalsIgnoringCase(u"Straße", u"STRASSE"));
    EXPECT_FALSE(equalsIgnoringCase(u"città", u"citta"));
    EXPECT_FALSE(equalsIgnoringCase(u"pop", u"pop "));
}

TEST(EqualsIgnoringCaseTest, twoSpellingsOfOneLetterAreEqual)
{
    EXPECT_TRUE(equalsIgnoringCase(u"Forl\u00EC", u"FORLI\u0300"));
}

TEST(EqualsIgnoringCaseTest, emptyTextsAreEqual)
{
    EXPECT_TRUE(equalsIgnoringCase(u"", QStringView()));
    EXPECT_FALSE(equalsIgnoringCase(u"", u"a"));
}

TEST(SortingTest, lowerCasedIsTheKeyOfNames)
{
    EXPECT_EQ(lowerCased(u"ÀRIA Fm"), QStringLiteral("ària fm"));
}

TEST(SortingTest, orderIsByCodePointAndNotByUnit)
{
    // U+FF21 comes before U+1F3B5, whose surrogates are smaller units.
    EXPECT_TRUE(codePointLess(u"\uFF21", u"\U0001F3B5"));
    EXPECT_FALSE(codePointLess(u"\U0001F3B5", u"\uFF21"));
    EXPECT_TRUE(codePointLess(u"a", u"ab"));
    EXPECT_TRUE(codePointLess(u"z", u"à"));
    EXPECT_FALSE(codePointLess(u"a", u"a"));
}

TEST(TrimmedTest, blanksAndLineBreaksGoAtBothEndsOnly)
{
    EXPECT_EQ(trimmed(u" \t\r\n\u00A0\u2028a b\u3000\u0085"), QStringLiteral("a b"));
    EXPECT_EQ(trimmed(u" \n"), QString());
}

TEST(CharacterTest, aCharacterIsWhatAPersonSees)
{
    EXPECT_EQ(characterCount(u""), 0);
    EXPECT_EQ(characterCount(u"IT"), 2);
    EXPECT_EQ(characterCount(u"e\u0301"), 1);
    EXPECT_EQ(characterCount(u"\U0001F1EE\U0001F1F9"), 1);
    EXPECT_EQ(characterCount(u"\U0001F1EE\U0001F1F9\U0001F1EB\U0001F1F7"), 2);
    EXPECT_EQ(characterCount(u"\U0001F468\u200D\U0001F469\u200D\U0001F467"), 1);
    EXPECT_EQ(characterCount(u"\r\n"), 1);
    EXPECT_EQ(characterCount(u"한글"), 2);
}

TEST(CharacterTest, theFirstCharacterKeepsItsMarks)
{
    EXPECT_EQ(firstCharacter(u"e\u0301a"), QStringLiteral("e\u0301"));
    EXPECT_EQ(firstCharacter(u"\U0001F1EE\U0001F1F9 Italia"), QStringLiteral("\U0001F1EE\U0001F1F9"));
    EXPECT_EQ(firstCharacter(u""), QString());
}

TEST(CharacterTest, onlyTheFirstCharacterIsUpperCased)
{
    EXPECT_EQ(withFirstCharacterUpperCased(u"eSwatini"), QStringLiteral("ESwatini"));
    EXPECT_EQ(withFirstCharacterUpperCased(u"isole Åland"), QStringLiteral("Isole Åland"));
    EXPECT_EQ(withFirstCharacterUpperCased(u""), QString());
}

}

}
