// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/Country.h"
#include "catalogue/ThemeMode.h"
#include "catalogue/WorldCatalog.h"

#include <gtest/gtest.h>

#include <QSet>

namespace velarin::test {

TEST(CountryTest, aFlagIsThePairOfRegionalIndicators)
{
    EXPECT_EQ(Country::flag(QStringLiteral("IT")), QStringLiteral("🇮🇹"));
    EXPECT_EQ(Country::flag(QStringLiteral("it")), QStringLiteral("🇮🇹"));
    // No ISO code, yet two letters.
    EXPECT_EQ(Country::flag(QStringLiteral("uk")), QStringLiteral("🇺🇰"));
}

TEST(CountryTest, whatIsNotTwoLettersHasNoFlag)
{
    for (const QString& code : { QStringLiteral("x1"), QStringLiteral("ITA"), QStringLiteral("I"), QString(),
             QStringLiteral("ÀB"), QStringLiteral(" I") })
        EXPECT_EQ(Country::flag(code), std::nullopt) << qPrintable(code);
}

TEST(CountryTest, aNameIsItalianAndBeginsWithACapital)
{
    EXPECT_EQ(Country::displayName(QStringLiteral("it")), QStringLiteral("Italia"));
    EXPECT_EQ(Country::displayName(QStringLiteral("NL")), QStringLiteral("Paesi Bassi"));
    EXPECT_EQ(Country::displayName(QStringLiteral("US")), QStringLiteral("Stati Uniti"));
}

TEST(CountryTest, aRegionThatNobodyKnowsIsCalledByItsCode)
{
    EXPECT_EQ(Country::displayName(QStringLiteral("qx")), QStringLiteral("QX"));
    EXPECT_EQ(Country::displayName(QString()), QString());
}

TEST(CountryTest, equalityComparesAllFields)
{
    const Country country{ QStringLiteral("IT"), QStringLiteral("Italia"), 3 };
    EXPECT_EQ(country, (Country{ QStringLiteral("IT"), QStringLiteral("Italia"), 3 }));
    EXPECT_NE(country, (Country{ QStringLiteral("IT"), QStringLiteral("Italia"), 4 }));
    EXPECT_NE(country, (Country{ QStringLiteral("IT"), QStringLiteral("Italy"), 3 }));
    EXPECT_NE(country, (Country{ QStringLiteral("XK"), QStringLiteral("Italia"), 3 }));
}

TEST(WorldCatalogTest, everyContinentHasItsTextItsNameAndItsCodes)
{
    struct
    {
        Continent continent;
        const char16_t* text;
        const char16_t* name;
        qsizetype count;
        const char16_t* first;
        const char16_t* last;
    } const rows[] = {
        { Continent::europe, u"europe", u"Europa", 50, u"IT", u"LI" },
        { Continent::northAmerica, u"northAmerica", u"Nord America", 33, u"US", u"KN" },
        { Continent::southAmerica, u"southAmerica", u"Sud America", 13, u"BR", u"GF" },
        { Continent::asia, u"asia", u"Asia", 45, u"CN", u"BN" },
        { Continent::africa, u"africa", u"Africa", 37, u"UG", u"SD" },
        { Continent::oceania, u"oceania", u"Oceania", 9, u"AU", u"GU" },
    };
    ASSERT_EQ(WorldCatalog::groups().size(), std::size(rows));
    for (std::size_t at = 0; at < std::size(rows); ++at) {
        const WorldCatalog::Group& group = WorldCatalog::groups()[at];
        EXPECT_EQ(group.continent, rows[at].continent);
        EXPECT_EQ(toText(group.continent), QString::fromUtf16(rows[at].text));
        EXPECT_EQ(displayName(group.continent), QString::fromUtf16(rows[at].name));
        EXPECT_EQ(group.codes.size(), rows[at].count);
        EXPECT_EQ(group.codes.first(), QString::fromUtf16(rows[at].first));
        EXPECT_EQ(group.codes.last(), QString::fromUtf16(rows[at].last));
    }
}

TEST(WorldCatalogTest, theCodesAreThoseOfTheGroupsInTheirOrderAndNoneTwice)
{
    const QStringList& codes = WorldCatalog::codes();
    QStringList joined;
    for (const WorldCatalog::Group& group : WorldCatalog::groups())
        joined += group.codes;

    EXPECT_EQ(codes, joined);
    EXPECT_EQ(codes.size(), 187);
    EXPECT_EQ(QSet<QString>(codes.begin(), codes.end()).size(), 187);
}

TEST(WorldCatalogTest, everyCodeHasAFlagAndAnItalianName)
{
    for (const QString& code : WorldCatalog::codes()) {
        EXPECT_TRUE(Country::flag(code)) << qPrintable(code);
        EXPECT_NE(Country::displayName(code), code);
    }
}

TEST(WorldCatalogTest, aCodeThatNoGroupHoldsIsEuropean)
{
    EXPECT_EQ(WorldCatalog::continentOf(QStringLiteral("JP")), Continent::asia);
    EXPECT_EQ(WorldCatalog::continentOf(QStringLiteral("GU")), Continent::oceania);
    EXPECT_EQ(WorldCatalog::continentOf(QStringLiteral("AQ")), Continent::europe);
    EXPECT_EQ(WorldCatalog::continentOf(QString()), Continent::europe);
}

TEST(ThemeModeTest, theThreeModesHaveTheirTextsInTheOrderOfThePicker)
{
    QStringList texts;
    for (const ThemeMode mode : allThemeModes) {
        texts.append(toText(mode));
        EXPECT_EQ(themeModeFromText(toText(mode)), mode);
    }
    EXPECT_EQ(texts, (QStringList{ QStringLiteral("system"), QStringLiteral("light"), QStringLiteral("dark") }));
}

TEST(ThemeModeTest, anUnknownTextReadsAsTheSystems)
{
    EXPECT_EQ(themeModeFromText(QStringLiteral("Dark")), ThemeMode::system);
    EXPECT_EQ(themeModeFromText(QString()), ThemeMode::system);
}

}
