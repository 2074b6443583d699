// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/ItalianLocale.h"

#include <gmock/gmock.h>

namespace velarin {

namespace {

TEST(InterfaceLocaleTest, anItalianSystemKeepsItsOwn)
{
    const QLocale ticino(QLocale::Italian, QLocale::Switzerland);
    EXPECT_EQ(interfaceLocale(ticino), ticino);
}

TEST(InterfaceLocaleTest, everyOtherSystemGetsThatOfItaly)
{
    const QLocale italy(QLocale::Italian, QLocale::Italy);
    EXPECT_EQ(interfaceLocale(QLocale::c()), italy);
    EXPECT_EQ(interfaceLocale(QLocale(QLocale::English, QLocale::UnitedStates)), italy);
    // German as it is written in Italy is still not Italian.
    EXPECT_EQ(interfaceLocale(QLocale(QLocale::German, QLocale::Italy)), italy);
}

TEST(InterfaceLocaleTest, theProgramSpeaksItalianWhateverTheSystem)
{
    EXPECT_EQ(interfaceLocale().language(), QLocale::Italian);
}

TEST(RegionNameTest, regionsHaveItalianNames)
{
    EXPECT_EQ(regionName(QStringLiteral("NL")), QStringLiteral("Paesi Bassi"));
    EXPECT_EQ(regionName(QStringLiteral("XK")), QStringLiteral("Kosovo"));
    EXPECT_EQ(regionName(QStringLiteral("UK")), QStringLiteral("Regno Unito"));
    EXPECT_EQ(regionName(QStringLiteral("DE")), QStringLiteral("Germania"));
}

TEST(RegionNameTest, lowerCaseCodesAreKnownToo)
{
    EXPECT_EQ(regionName(QStringLiteral("fr")), QStringLiteral("Francia"));
}

TEST(RegionNameTest, anUnknownCodeHasNoName)
{
    EXPECT_EQ(regionName(QStringLiteral("QQ")), QString());
}

TEST(RegionNameTest, whatIsNoCodeNeverReachesTheTables)
{
    for (const QString& code : { QString(), QStringLiteral("I"), QStringLiteral("ITA"), QStringLiteral("1T"),
             QStringLiteral("è1"), QStringLiteral("IT@currency=EUR"), QStringLiteral("Hant_TW") })
        EXPECT_EQ(regionName(code), QString()) << qPrintable(code);
}

}

}
