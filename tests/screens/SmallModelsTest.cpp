// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/Renderer.h"
#include "screens/ScreensFixture.h"
#include "screens/parts/AppearanceModel.h"
#include "screens/player/OutputDevicesModel.h"
#include "screens/window/SidebarModel.h"
#include "support/FakeOutputDevices.h"

#include <QSignalSpy>

using namespace velarin;
using namespace velarin::test;
using namespace testing;

namespace {

class AppearanceModelTest : public ScreensFixture
{
protected:
    FakeAppearance desktop;
    AppearanceModel model{ repository, desktop };
};

class OutputDevicesModelTest : public Test
{
protected:
    FakeOutputDevices devices;
    OutputDevicesModel model{ devices };
};

}

TEST(EffectiveSchemeTest, onlyTheAutomaticModeAsksTheDesktop)
{
    for (const ColorScheme desktop : { ColorScheme::Light, ColorScheme::Dark }) {
        EXPECT_EQ(effectiveScheme(ThemeMode::system, desktop), desktop);
        EXPECT_EQ(effectiveScheme(ThemeMode::light, desktop), ColorScheme::Light);
        EXPECT_EQ(effectiveScheme(ThemeMode::dark, desktop), ColorScheme::Dark);
    }
}

TEST_F(AppearanceModelTest, itIsReadyWithTheFirstWordOfTheDesktopAndOnlyOnce)
{
    int ready = 0;
    desktop.wishes = { ColorScheme::Light, true, true };
    model.start([&ready] { ++ready; });
    EXPECT_EQ(ready, 1);
    EXPECT_FALSE(model.isDark());
    EXPECT_TRUE(model.hasReducedMotion());
    EXPECT_TRUE(model.hasHighContrast());
    desktop.changed({ ColorScheme::Dark, false, false });
    EXPECT_EQ(ready, 1);
    EXPECT_TRUE(model.isDark());
}

TEST_F(AppearanceModelTest, aChoiceOfTheUserWinsWhileTheProgramRuns)
{
    desktop.wishes.scheme = ColorScheme::Light;
    model.start([] {});
    const QSignalSpy spy(&model, &AppearanceModel::darkChanged);
    repository.setThemeMode(ThemeMode::dark);
    EXPECT_TRUE(model.isDark());
    desktop.changed(desktop.wishes);
    EXPECT_TRUE(model.isDark());
    repository.setThemeMode(ThemeMode::system);
    EXPECT_FALSE(model.isDark());
    EXPECT_EQ(spy.count(), 2);
}

TEST_F(OutputDevicesModelTest, devicesAreWatchedOnlyWhileTheMenuIsOpen)
{
    EXPECT_FALSE(devices.changed);
    model.open();
    EXPECT_TRUE(devices.changed);
    EXPECT_EQ(model.rowCount(), 2);
    model.close();
    EXPECT_FALSE(devices.changed);
}

TEST_F(OutputDevicesModelTest, aChoiceMovesTheSoundAndTheMark)
{
    model.open();
    EXPECT_TRUE(model.data(model.index(0), OutputDevicesModel::ChosenRole).toBool());
    model.choose(1);
    EXPECT_EQ(devices.chosen, u"headset");
    EXPECT_TRUE(model.data(model.index(1), OutputDevicesModel::ChosenRole).toBool());
    EXPECT_FALSE(model.data(model.index(0), OutputDevicesModel::ChosenRole).toBool());
    model.choose(7);
    EXPECT_EQ(devices.chosen, u"headset");
}

TEST_F(OutputDevicesModelTest, aDeviceThatComesWhileTheMenuIsOpenAppears)
{
    model.open();
    devices.changed({ { QString(), QStringLiteral("Uscita predefinita") } });
    EXPECT_EQ(model.rowCount(), 1);
}

TEST(SidebarModelTest, thePlaceStandsUnderItsHeading)
{
    Broadcasts broadcasts;
    const SidebarModel sidebar(broadcasts);
    ASSERT_EQ(sidebar.rowCount(), 1);
    EXPECT_EQ(sidebar.data(sidebar.index(0), SidebarModel::HeadingRole), QStringLiteral("Ascolta"));
    EXPECT_EQ(sidebar.data(sidebar.index(0), SidebarModel::LabelRole), QStringLiteral("Radio italiane"));
    EXPECT_EQ(
        sidebar.data(sidebar.index(0), SidebarModel::SymbolRole), QStringLiteral("dot.radiowaves.left.and.right"));
}

TEST(SidebarModelTest, aTextThatIsNoPlaceChangesNothing)
{
    Broadcasts broadcasts;
    SidebarModel sidebar(broadcasts);
    const QSignalSpy spy(&sidebar, &SidebarModel::selectionChanged);
    Q_EMIT broadcasts.radioOpenSidebarItem(QStringLiteral("nowhere"));
    Q_EMIT broadcasts.radioOpenSidebarItem(QStringLiteral("italy"));
    EXPECT_EQ(sidebar.selection(), u"italy");
    EXPECT_EQ(spy.count(), 0);
}

TEST(RendererTest, aDriverThatDrawsOnTheProcessorIsNoGraphicsCard)
{
    EXPECT_TRUE(drawsOnTheProcessor("llvmpipe (LLVM 15.0.6, 256 bits)"));
    EXPECT_TRUE(drawsOnTheProcessor("softpipe"));
    EXPECT_TRUE(drawsOnTheProcessor("Google SwiftShader"));
    EXPECT_TRUE(drawsOnTheProcessor({}));
    EXPECT_FALSE(drawsOnTheProcessor("Mesa Intel(R) UHD Graphics 620 (KBL GT2)"));
    EXPECT_FALSE(drawsOnTheProcessor("AMD Radeon RX 6600 (navi23, LLVM 15.0.6)"));
}
