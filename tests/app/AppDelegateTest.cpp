// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AppDelegate.h"

#include "base/Broadcasts.h"
#include "catalogue/StationRepository.h"
#include "coordination/AudioLevel.h"
#include "coordination/FakeEngine.h"
#include "coordination/PlaybackCoordinator.h"
#include "diagnostics/Diagnostics.h"
#include "support/FakeClock.h"
#include "support/FakeDefaults.h"
#include "support/FakeFiles.h"
#include "support/FakeLoginItem.h"
#include "support/FakeMediaControls.h"
#include "support/ManualExecutor.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

namespace velarin::test {

namespace {

const QString openAtLoginKey = QStringLiteral("open_at_login");
const QString alarmIdentifier = QStringLiteral("alarm-1234-5678-9-1700000000");

}

// One run of the program; whatever happens in it is noted in `steps`.
class AppDelegateTest : public testing::Test
{
protected:
    AppDelegateTest()
    {
        coordinator.attach(PlaybackCoordinator::Source::radio, radio);
        radio.onVolume = [this] { steps.append(QStringLiteral("volume")); };
        QObject::connect(&diagnostics, &Diagnostics::eventsChanged, &diagnostics,
            [this] { steps.append(diagnostics.events().last().message); });
    }

    AppDelegate::Services services()
    {
        return { .diagnostics = diagnostics,
            .loginItem = loginItem,
            .defaults = defaults,
            .stations = stations,
            .audioLevel = audioLevel,
            .applyTheme = [this](ThemeMode mode) { steps.append(QStringLiteral("theme ") + toText(mode)); },
            .activate = [this] { steps.append(QStringLiteral("front")); } };
    }

    AppDelegate::RingFromUser ring()
    {
        return [this](const QString& alarmId) { steps.append(QStringLiteral("ring ") + alarmId); };
    }

    void finishLoad()
    {
        files.deliverReads();
        executor.runAll();
    }

    QStringList steps;
    FakeFiles files;
    FakeDefaults defaults;
    FakeClock clock;
    FakeLoginItem loginItem;
    FakeMediaControls controls;
    ManualExecutor executor;
    Broadcasts broadcasts;
    FakeEngine radio;
    Diagnostics diagnostics{ QStringLiteral("/diagnostics.json"), {}, files, defaults, clock };
    StationRepository stations{ {}, files, defaults, executor, broadcasts };
    PlaybackCoordinator coordinator{ controls, diagnostics, defaults };
    AudioLevel audioLevel{ defaults, coordinator, controls };
    AppDelegate delegate{ services() };
};

TEST_F(AppDelegateTest, theStartRunsInItsOrder)
{
    defaults.setBoolean(openAtLoginKey, true);
    stations.setThemeMode(ThemeMode::dark);
    stations.ensureLoaded([this] { steps.append(QStringLiteral("loaded")); });

    delegate.applicationDidFinishLaunching();
    finishLoad();

    EXPECT_EQ(steps, (QStringList{ QStringLiteral("Avvio · versione ? (?) · macOS "),
                         QStringLiteral("Avvio al login registrato di nuovo dopo il cambio di nome"),
                         QStringLiteral("theme dark"), QStringLiteral("volume"), QStringLiteral("loaded") }));
}

TEST_F(AppDelegateTest, theStationsLoadWhileTheInterfaceComesUp)
{
    delegate.applicationDidFinishLaunching();
    EXPECT_FALSE(stations.isLoaded());

    finishLoad();

    EXPECT_TRUE(stations.isLoaded());
}

TEST_F(AppDelegateTest, theStoredVolumeReachesTheEngines)
{
    audioLevel.setUser(0.25F);
    radio.level = 0.0F;

    delegate.applicationDidFinishLaunching();

    EXPECT_EQ(radio.level, 0.25F);
}

TEST_F(AppDelegateTest, theLoginItemIsRegisteredAgainOnlyWhereItIsWantedAndNotEnabled)
{
    struct
    {
        QJsonValue wanted;
        LoginItem::Status status;
        int registrations;
    } const rows[] = {
        { QJsonValue::Undefined, LoginItem::Status::NotRegistered, 0 },
        { false, LoginItem::Status::NeedsRepair, 0 },
        { QStringLiteral("true"), LoginItem::Status::NotRegistered, 0 },
        { true, LoginItem::Status::Enabled, 0 },
        { true, LoginItem::Status::NotRegistered, 1 },
        { true, LoginItem::Status::NeedsRepair, 1 },
    };
    for (const auto& row : rows) {
        defaults.stored.remove(openAtLoginKey);
        if (!row.wanted.isUndefined())
            defaults.stored.insert(openAtLoginKey, row.wanted);
        loginItem.current = row.status;
        loginItem.registrations = 0;
        delegate.applicationDidFinishLaunching();
        EXPECT_EQ(loginItem.registrations, row.registrations);
    }
}

TEST_F(AppDelegateTest, aLoginItemThatCannotBeRegisteredIsToldWithItsReason)
{
    defaults.setBoolean(openAtLoginKey, true);
    loginItem.failure = QStringLiteral("cartella protetta");

    delegate.applicationDidFinishLaunching();

    EXPECT_EQ(diagnostics.events().last().message, QStringLiteral("Avvio al login non riuscito: cartella protetta"));
    EXPECT_EQ(diagnostics.events().last().category, DiagnosticCategory::error);
}

TEST_F(AppDelegateTest, closingTheWindowDoesNotEndTheProgram)
{
    EXPECT_FALSE(delegate.applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(AppDelegateTest, aLaunchRightAfterAQuitDuringPlaybackReportsNoCrash)
{
    coordinator.activate(PlaybackCoordinator::Source::radio);

    delegate.applicationWillTerminate();

    EXPECT_EQ(defaults.boolean(wasPlayingKey), false);
    Diagnostics next(QStringLiteral("/diagnostics.json"), {}, files, defaults, clock);
    next.noteLaunch();
    EXPECT_EQ(next.events().size(), 1);
}

TEST_F(AppDelegateTest, theQuitEndsTheHeartbeat)
{
    coordinator.activate(PlaybackCoordinator::Source::radio);

    delegate.applicationWillTerminate();
    clock.advance(std::chrono::hours(1));

    EXPECT_TRUE(diagnostics.events().isEmpty());
}

TEST_F(AppDelegateTest, anAlarmInFrontIsShownAtOnceAndRingsInALaterTurn)
{
    PresentationOptions shown;
    delegate.userNotificationWillPresent(
        alarmIdentifier, [&shown](PresentationOptions options) { shown = options; }, ring());
    EXPECT_EQ(static_cast<int>(shown), 26);
    EXPECT_TRUE(steps.isEmpty());

    QCoreApplication::sendPostedEvents();

    EXPECT_EQ(steps, QStringList{ QStringLiteral("ring 1234-5678-9") });
}

TEST_F(AppDelegateTest, aForeignNotificationInFrontIsShownAndRingsNothing)
{
    PresentationOptions shown;
    delegate.userNotificationWillPresent(
        QStringLiteral("alarm-abc"), [&shown](PresentationOptions options) { shown = options; }, ring());
    QCoreApplication::sendPostedEvents();

    EXPECT_EQ(static_cast<int>(shown), 26);
    EXPECT_TRUE(steps.isEmpty());
}

TEST_F(AppDelegateTest, anAnsweredAlarmComesToTheFrontLoadsTheStationsAndRings)
{
    delegate.userNotificationDidReceive(
        alarmIdentifier, [this] { steps.append(QStringLiteral("done")); }, ring());
    EXPECT_TRUE(steps.isEmpty());
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(steps, QStringList{ QStringLiteral("front") });

    finishLoad();

    EXPECT_EQ(
        steps, (QStringList{ QStringLiteral("front"), QStringLiteral("ring 1234-5678-9"), QStringLiteral("done") }));
}

TEST_F(AppDelegateTest, anAnsweredForeignNotificationOnlyCallsTheCompletionHandler)
{
    for (const QString& identifier : { QStringLiteral("update-1-2"), QStringLiteral("alarm-abc") }) {
        steps.clear();
        delegate.userNotificationDidReceive(
            identifier, [this] { steps.append(QStringLiteral("done")); }, ring());
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(steps, QStringList{ QStringLiteral("done") });
    }
    EXPECT_FALSE(stations.isLoaded());
}

}
