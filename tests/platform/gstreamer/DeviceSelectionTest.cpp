// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/DeviceSelection.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace velarin::test {
namespace {

TEST(DeviceSelectionTest, beginsWithTheDefault)
{
    EXPECT_EQ(DeviceSelection().selected(), QString());
}

TEST(DeviceSelectionTest, aChoiceReachesEveryOutput)
{
    DeviceSelection selection;
    QStringList one;
    QStringList two;
    const auto first = selection.subscribe([&](const QString& device) { one << device; });
    const auto second = selection.subscribe([&](const QString& device) { two << device; });
    selection.select(QStringLiteral("headset"));
    selection.select(QString());
    EXPECT_EQ(one, (QStringList{ QStringLiteral("headset"), QString() }));
    EXPECT_EQ(two, one);
}

TEST(DeviceSelectionTest, theSameChoiceAgainMovesNothing)
{
    DeviceSelection selection;
    int moves = 0;
    const auto subscription = selection.subscribe([&](const QString&) { ++moves; });
    selection.select(QStringLiteral("headset"));
    selection.select(QStringLiteral("headset"));
    EXPECT_EQ(moves, 1);
}

TEST(DeviceSelectionTest, anOutputThatIsGoneHearsNoMore)
{
    DeviceSelection selection;
    int moves = 0;
    auto subscription = selection.subscribe([&](const QString&) { ++moves; });
    subscription.reset();
    selection.select(QStringLiteral("headset"));
    EXPECT_EQ(moves, 0);
}

}
}
