// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/TitleClock.h"

#include <gtest/gtest.h>

namespace velarin::live {

namespace {

const QString first = QStringLiteral("first");
const QString second = QStringLiteral("second");

}

TEST(TitleClockTest, aTitleIsDueWhenItsSoundIsHeard)
{
    TitleClock clock;
    clock.add(Seconds(4.0), first);
    EXPECT_EQ(clock.next(), Seconds(4.0));
    EXPECT_EQ(clock.takeDue(Seconds(3.9)), std::nullopt);
    EXPECT_EQ(clock.takeDue(Seconds(4.0)), first);
    EXPECT_EQ(clock.takeDue(Seconds(5.0)), std::nullopt);
    EXPECT_EQ(clock.next(), std::nullopt);
}

TEST(TitleClockTest, theSameTitleAgainIsNoNews)
{
    TitleClock clock;
    clock.add(Seconds(1.0), first);
    clock.add(Seconds(2.0), first);
    EXPECT_EQ(clock.takeDue(Seconds(1.0)), first);
    EXPECT_EQ(clock.takeDue(Seconds(2.0)), std::nullopt);
    clock.add(Seconds(3.0), first);
    EXPECT_EQ(clock.takeDue(Seconds(3.0)), std::nullopt);
}

TEST(TitleClockTest, anEmptyTitleIsNews)
{
    TitleClock clock;
    clock.add(Seconds(1.0), first);
    clock.add(Seconds(2.0), QString());
    EXPECT_EQ(clock.takeDue(Seconds(1.0)), first);
    EXPECT_EQ(clock.takeDue(Seconds(2.0)), QString());
}

TEST(TitleClockTest, ofTitlesThatWereSkippedOnlyTheLastIsTold)
{
    TitleClock clock;
    clock.add(Seconds(1.0), first);
    clock.add(Seconds(2.0), second);
    EXPECT_EQ(clock.takeDue(Seconds(9.0)), second);
}

TEST(TitleClockTest, titlesOutOfOrderAreSorted)
{
    TitleClock clock;
    clock.add(Seconds(5.0), second);
    clock.add(Seconds(1.0), first);
    EXPECT_EQ(clock.takeDue(Seconds(2.0)), first);
    EXPECT_EQ(clock.takeDue(Seconds(5.0)), second);
}

TEST(TitleClockTest, aServerCannotMakeItGrow)
{
    TitleClock clock;
    for (int number = 0; number < 10'000; ++number)
        clock.add(Seconds(number), QString::number(number));
    int told = 0;
    for (int number = 0; number < 10'000; ++number)
        told += clock.takeDue(Seconds(number)).has_value() ? 1 : 0;
    EXPECT_EQ(told, static_cast<int>(TitleClock::capacity));
}

}
