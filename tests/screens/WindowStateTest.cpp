// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/window/WindowState.h"

#include "support/FakeClock.h"
#include "support/FakeDefaults.h"

#include <QRect>

#include <gmock/gmock.h>

using namespace velarin;
using namespace velarin::test;
using namespace testing;
using namespace std::chrono_literals;

namespace {

const QList<QRect> screens{ QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 1024) };

class WindowStateTest : public Test
{
protected:
    FakeClock clock;
    FakeDefaults defaults;
};

}

TEST(PlacedWindowTest, aFirstStartHasTheUsualSizeInTheMiddle)
{
    EXPECT_EQ(placedWindow({}, screens), QRect(370, 150, 1180, 780));
}

TEST(PlacedWindowTest, aRememberedWindowStandsWhereItStood)
{
    const QRect window(2000, 40, 1000, 700);
    EXPECT_EQ(placedWindow(window, screens), window);
}

TEST(PlacedWindowTest, aWindowOfAScreenThatIsGoneComesToTheMiddle)
{
    const QRect placed = placedWindow(QRect(5000, 40, 1000, 700), screens);
    EXPECT_TRUE(screens[0].contains(placed));
    EXPECT_EQ(placed.size(), QSize(1000, 700));
}

TEST(PlacedWindowTest, aWindowWhoseUpperEdgeIsAboveTheScreenIsBroughtBack)
{
    EXPECT_TRUE(screens[0].contains(placedWindow(QRect(100, -400, 1000, 700), screens)));
}

TEST(PlacedWindowTest, noWindowIsSmallerThanTheLeast)
{
    EXPECT_EQ(placedWindow(QRect(10, 10, 20, 20), screens).size(), WindowSizes::least);
}

TEST(PlacedWindowTest, aWindowLargerThanEveryScreenIsCutToTheFirst)
{
    EXPECT_EQ(placedWindow(QRect(-9000, 0, 5000, 4000), screens).size(), QSize(1920, 1080));
}

TEST(PlacedWindowTest, withoutAScreenTheSizeStays)
{
    EXPECT_EQ(placedWindow({}, {}).size(), WindowSizes::usual);
}

TEST_F(WindowStateTest, whatIsRememberedComesBack)
{
    {
        WindowState state(defaults, clock);
        state.noteGeometry(QRect(30, 40, 1000, 700));
        state.noteMaximized(true);
        state.setSidebarWidth(240);
        clock.advance(1s);
    }
    const WindowState again(defaults, clock);
    EXPECT_EQ(again.geometry(screens), QRect(30, 40, 1000, 700));
    EXPECT_TRUE(again.isMaximized());
    EXPECT_EQ(again.sidebarWidth(), 240);
}

TEST_F(WindowStateTest, aDraggedWindowIsStoredOnceWhenItRests)
{
    WindowState state(defaults, clock);
    for (int x = 0; x < 200; ++x) {
        state.noteGeometry(QRect(x, 0, 1000, 700));
        clock.advance(10ms);
    }
    EXPECT_TRUE(defaults.writes.isEmpty());
    clock.advance(1s);
    EXPECT_EQ(defaults.writes.count(QStringLiteral("window_x")), 1);
    EXPECT_EQ(defaults.integer(QStringLiteral("window_x")), 199);
}

TEST_F(WindowStateTest, atTheEndWhatWaitsIsStoredAndNothingElse)
{
    WindowState state(defaults, clock);
    state.storeNow();
    EXPECT_TRUE(defaults.writes.isEmpty());
    state.noteGeometry(QRect(5, 6, 1000, 700));
    state.storeNow();
    EXPECT_EQ(defaults.integer(QStringLiteral("window_y")), 6);
}

TEST_F(WindowStateTest, theSidebarStaysWithinItsBounds)
{
    WindowState state(defaults, clock);
    EXPECT_EQ(state.sidebarWidth(), 214);
    state.setSidebarWidth(20);
    EXPECT_EQ(state.sidebarWidth(), 196);
    state.setSidebarWidth(2000);
    EXPECT_EQ(state.sidebarWidth(), 280);
}

TEST_F(WindowStateTest, damagedValuesReadAsNone)
{
    defaults.setString(QStringLiteral("window_x"), QStringLiteral("left"));
    defaults.setInteger(QStringLiteral("window_y"), 4);
    defaults.setReal(QStringLiteral("window_width"), 1e18);
    defaults.setInteger(QStringLiteral("window_sidebar_width"), -9'000'000'000);
    const WindowState state(defaults, clock);
    EXPECT_EQ(state.geometry(screens).size(), WindowSizes::usual);
    EXPECT_EQ(state.sidebarWidth(), 196);
}
