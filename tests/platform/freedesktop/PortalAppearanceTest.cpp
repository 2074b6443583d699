// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/PortalAppearance.h"

#include "platform/freedesktop/DbusMock.h"
#include "support/WaitUntil.h"

#include <QDBusVariant>
#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace velarin::test {

namespace {

QPalette paletteOf(Qt::GlobalColor window, Qt::GlobalColor text)
{
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    return palette;
}

const QPalette lightPalette = paletteOf(Qt::white, Qt::black);
const QPalette darkPalette = paletteOf(Qt::black, Qt::white);

// What the portal of a dark desktop answers, by Python.
const QString darkDesktop = QStringLiteral(
    "ret = {'color-scheme': dbus.UInt32(1), 'contrast': dbus.UInt32(1), 'enable-animations': False}[args[1]]");

}

TEST(AppearanceJudgementTest, thePortalsWordGoesBeforeThePalette)
{
    struct Row
    {
        PortalSettings settings;
        const QPalette* palette;
        Appearance::Wishes wishes;
    };
    const Row rows[] = {
        { { .colorScheme = 1, .contrast = 0, .animations = true }, &lightPalette, { ColorScheme::Dark, false, false } },
        { { .colorScheme = 2, .contrast = 1, .animations = true }, &darkPalette, { ColorScheme::Light, false, true } },
        { { .colorScheme = 0, .contrast = 0, .animations = false }, &darkPalette, { ColorScheme::Dark, true, false } },
        { { .colorScheme = 7, .contrast = 7, .animations = {} }, &lightPalette, { ColorScheme::Light, false, false } },
        { {}, &lightPalette, { ColorScheme::Light, false, false } },
        { {}, &darkPalette, { ColorScheme::Dark, false, false } },
    };
    for (const Row& row : rows)
        EXPECT_EQ(judgeAppearance(row.settings, *row.palette), row.wishes) << "row " << &row - rows;
}

class PortalAppearanceTest : public testing::Test
{
protected:
    void answer(const QString& method, const QString& body)
    {
        portal.addMethod(method, QStringLiteral("ss"), QStringLiteral("v"), body);
    }

    void start()
    {
        ASSERT_TRUE(portal.isReady());
        appearance.start([this](const Appearance::Wishes& wishes) { told.push_back(wishes); });
        sinceStart.start();
    }

    [[nodiscard]] bool isTold(std::size_t count)
    {
        return waitUntil([&] { return told.size() >= count; });
    }

    void change(const QString& space, const QString& key, const QVariant& value)
    {
        portal.emitSignal(QStringLiteral("SettingChanged"), QStringLiteral("ssv"),
            { space, key, QVariant::fromValue(QDBusVariant(value)) });
    }

    PrivateBus bus;
    DbusMock portal{ bus, QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"), QStringLiteral("org.freedesktop.portal.Settings") };
    PortalAppearance appearance{ bus.connect(), [] { return lightPalette; } };
    std::vector<Appearance::Wishes> told;
    QElapsedTimer sinceStart;
};

TEST_F(PortalAppearanceTest, theWishesOfTheDesktopAreToldOnce)
{
    ASSERT_TRUE(portal.isReady());
    answer(QStringLiteral("ReadOne"), darkDesktop);
    start();
    ASSERT_TRUE(isTold(1));
    EXPECT_EQ(told.front(), (Appearance::Wishes{ ColorScheme::Dark, true, true }));
    EXPECT_FALSE(waitUntil([&] { return told.size() > 1; }, std::chrono::milliseconds(300)));
}

TEST_F(PortalAppearanceTest, anOlderPortalIsAskedInItsOwnWay)
{
    ASSERT_TRUE(portal.isReady());
    QString wrapped = darkDesktop;
    wrapped.replace(QStringLiteral("dbus.UInt32(1)"), QStringLiteral("dbus.UInt32(1, variant_level=1)"));
    wrapped.replace(QStringLiteral("False"), QStringLiteral("dbus.Boolean(False, variant_level=1)"));
    answer(QStringLiteral("Read"), wrapped);
    start();
    ASSERT_TRUE(isTold(1));
    EXPECT_EQ(told.front(), (Appearance::Wishes{ ColorScheme::Dark, true, true }));
}

TEST_F(PortalAppearanceTest, aChangeWhileRunningIsFollowedAndTheSameAgainIsNot)
{
    ASSERT_TRUE(portal.isReady());
    answer(QStringLiteral("ReadOne"), darkDesktop);
    start();
    ASSERT_TRUE(isTold(1));
    const QString space = QStringLiteral("org.freedesktop.appearance");
    const QString scheme = QStringLiteral("color-scheme");
    change(space, scheme, QVariant::fromValue<uint>(1));
    change(QStringLiteral("org.kde.kdeglobals"), scheme, QVariant::fromValue<uint>(2));
    change(space, scheme, QVariant::fromValue<uint>(2));
    ASSERT_TRUE(isTold(2));
    EXPECT_EQ(told.back(), (Appearance::Wishes{ ColorScheme::Light, true, true }));
    change(QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("enable-animations"), true);
    ASSERT_TRUE(isTold(3));
    EXPECT_EQ(told.back(), (Appearance::Wishes{ ColorScheme::Light, false, true }));
    change(space, QStringLiteral("contrast"), QVariant::fromValue<uint>(0));
    ASSERT_TRUE(isTold(4));
    EXPECT_EQ(told.back(), (Appearance::Wishes{ ColorScheme::Light, false, false }));
    EXPECT_EQ(told.size(), 4U);
}

TEST_F(PortalAppearanceTest, aPortalThatIsSlowDoesNotHoldUpTheFirstWindow)
{
    ASSERT_TRUE(portal.isReady());
    answer(QStringLiteral("ReadOne"), QStringLiteral("import time; time.sleep(0.5); ") + darkDesktop);
    start();
    ASSERT_TRUE(isTold(1));
    EXPECT_LT(sinceStart.elapsed(), 300);
    EXPECT_EQ(told.front().scheme, ColorScheme::Light) << "by the palette";
    ASSERT_TRUE(waitUntil([&] {
        return told.back() == Appearance::Wishes{ ColorScheme::Dark, true, true };
    })) << "the late answer counts as a change";
}

TEST_F(PortalAppearanceTest, anAnswerOfAnotherTypeSaysNothing)
{
    ASSERT_TRUE(portal.isReady());
    answer(QStringLiteral("ReadOne"), QStringLiteral("ret = 'dark'"));
    start();
    ASSERT_TRUE(isTold(1));
    EXPECT_EQ(told.front(), (Appearance::Wishes{ ColorScheme::Light, false, false }));
}

TEST(PortalAppearanceWithoutPortalTest, thePaletteIsJudgedInALaterTurn)
{
    PrivateBus bus;
    for (const QDBusConnection& connection : { bus.connect(), QDBusConnection(QStringLiteral("none")) }) {
        PortalAppearance appearance(connection, [] { return darkPalette; });
        std::vector<Appearance::Wishes> told;
        appearance.start([&](const Appearance::Wishes& wishes) { told.push_back(wishes); });
        EXPECT_TRUE(told.empty());
        ASSERT_TRUE(waitUntil([&] { return !told.empty(); }, std::chrono::milliseconds(300)));
        EXPECT_EQ(told.front(), (Appearance::Wishes{ ColorScheme::Dark, false, false }));
    }
}

}
