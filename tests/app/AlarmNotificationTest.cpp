// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AlarmNotification.h"

#include <gtest/gtest.h>

namespace velarin::test {

TEST(AlarmNotificationTest, theAlarmStandsBetweenThePrefixAndTheLastHyphen)
{
    EXPECT_EQ(alarmIdOfNotification(QStringLiteral("alarm-1234-1700000000")), QStringLiteral("1234"));
    EXPECT_EQ(alarmIdOfNotification(QStringLiteral("alarm-1234-5678-9-1700000000")), QStringLiteral("1234-5678-9"));
    EXPECT_EQ(alarmIdOfNotification(QStringLiteral("alarm-abc-")), QStringLiteral("abc"));
    EXPECT_EQ(alarmIdOfNotification(QStringLiteral("alarm-alarm-1-2")), QStringLiteral("alarm-1"));
}

TEST(AlarmNotificationTest, withoutAHyphenAfterThePrefixNothingRings)
{
    EXPECT_EQ(alarmIdOfNotification(QStringLiteral("alarm-abc")), std::nullopt);
    EXPECT_EQ(alarmIdOfNotification(QStringLiteral("alarm-")), std::nullopt);
}

TEST(AlarmNotificationTest, anotherBeginningRingsNothing)
{
    for (const QString& identifier : { QString(), QStringLiteral("alarm"), QStringLiteral("Alarm-1-2"),
             QStringLiteral("sleep-1-2"), QStringLiteral(" alarm-1-2") })
        EXPECT_EQ(alarmIdOfNotification(identifier), std::nullopt) << qPrintable(identifier);
}

}
