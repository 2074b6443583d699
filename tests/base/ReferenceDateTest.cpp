// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/ReferenceDate.h"

#include <gmock/gmock.h>

#include <limits>

namespace velarin {

namespace {

TEST(ReferenceDateTest, zeroIsTheBeginningOfTwoThousandAndOneInUtc)
{
    EXPECT_EQ(fromReferenceSeconds(0.0), QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC));
}

TEST(ReferenceDateTest, aDateSurvivesToTheMillisecond)
{
    const QDateTime date(QDate(2026, 11, 21), QTime(7, 30, 0, 123), Qt::UTC);
    EXPECT_EQ(fromReferenceSeconds(toReferenceSeconds(date)), date);
}

TEST(ReferenceDateTest, datesBeforeTheBeginningAreNegative)
{
    EXPECT_EQ(toReferenceSeconds(QDateTime(QDate(2000, 12, 31), QTime(23, 59, 59), Qt::UTC)), -1.0);
}

TEST(ReferenceDateTest, aLocalTimeIsStoredAsItsMoment)
{
    const QDateTime moment(QDate(2001, 1, 1), QTime(2, 0), Qt::OffsetFromUTC, 3600);
    EXPECT_EQ(toReferenceSeconds(moment), 3600.0);
}

TEST(ReferenceDateTest, whatNoClockEverWroteIsAbsent)
{
    for (const double seconds :
        { 1.1e12, -1.1e12, 1.0e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN() })
        EXPECT_EQ(fromReferenceSeconds(seconds), std::nullopt) << seconds;
}

}

}
