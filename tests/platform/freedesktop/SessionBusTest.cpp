// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/SessionBus.h"

#include "platform/freedesktop/PrivateBus.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace velarin::test {

namespace {

QProcessEnvironment environmentWith(const QString& address, const QString& runtimeFolder)
{
    QProcessEnvironment environment;
    if (!address.isEmpty())
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
    if (!runtimeFolder.isEmpty())
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtimeFolder);
    return environment;
}

}

TEST(SessionBusTest, theAddressOfTheEnvironmentIsTaken)
{
    EXPECT_EQ(sessionBusAddress(environmentWith(QStringLiteral("unix:path=/x"), {})), QStringLiteral("unix:path=/x"));
}

// Each test connects anew: a connection that failed would keep its name.
class SessionBusConnectionTest : public testing::Test
{
protected:
    void TearDown() override { QDBusConnection::disconnectFromBus(QStringLiteral("velarin-session")); }
};

TEST(SessionBusTest, withoutItTheSocketOfTheRuntimeFolderIsTakenIfItIsThere)
{
    const QTemporaryDir folder;
    EXPECT_EQ(sessionBusAddress(environmentWith({}, folder.path())), QString());
    QFile socket(folder.filePath(QStringLiteral("bus")));
    ASSERT_TRUE(socket.open(QIODevice::WriteOnly));
    EXPECT_EQ(sessionBusAddress(environmentWith({}, folder.path())), QStringLiteral("unix:path=") + socket.fileName());
}

TEST(SessionBusTest, aFolderWithOddCharactersIsEscaped)
{
    const QTemporaryDir parent;
    const QString folder = parent.filePath(QStringLiteral("a;b,c d"));
    QDir().mkpath(folder);
    QFile socket(folder + QStringLiteral("/bus"));
    ASSERT_TRUE(socket.open(QIODevice::WriteOnly));
    EXPECT_TRUE(sessionBusAddress(environmentWith({}, folder)).endsWith(QStringLiteral("/a%3Bb%2Cc%20d/bus")));
}

TEST(SessionBusTest, withoutAnyBusThereIsNoAddressAndNoConnection)
{
    EXPECT_EQ(sessionBusAddress(environmentWith({}, {})), QString());
    EXPECT_FALSE(connectToSessionBus(environmentWith({}, {})).isConnected());
}

TEST(SessionBusTest, aBusIsNeverLaunched)
{
    EXPECT_EQ(sessionBusAddress(environmentWith(QStringLiteral("autolaunch:"), {})), QString());
    EXPECT_EQ(sessionBusAddress(environmentWith(QStringLiteral("unix:path=/x;autolaunch:scope=user"), {})),
        QStringLiteral("unix:path=/x"));
}

TEST_F(SessionBusConnectionTest, anAddressThatNobodyServesGivesNoConnection)
{
    EXPECT_FALSE(connectToSessionBus(environmentWith(QStringLiteral("unix:path=/nowhere/bus"), {})).isConnected());
}

TEST_F(SessionBusConnectionTest, itConnectsToTheBusThatIsThere)
{
    const PrivateBus bus;
    EXPECT_TRUE(connectToSessionBus(bus.environment()).isConnected());
}

}
