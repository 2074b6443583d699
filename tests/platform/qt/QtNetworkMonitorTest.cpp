// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/QtNetworkMonitor.h"

#include "NetworkManagerMock.h"
#include "support/WaitUntil.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gmock/gmock.h>

#include <memory>
#include <vector>

namespace velarin {

namespace {

using test::NetworkManagerMock;
using test::waitUntil;

class QtNetworkMonitorTest : public testing::Test
{
protected:
    void start()
    {
        QElapsedTimer blocked;
        blocked.start();
        monitor = std::make_unique<QtNetworkMonitor>(mock.connection());
        monitor->start([this](bool online) { verdicts.push_back(online); });
        EXPECT_TRUE(verdicts.empty());
        EXPECT_LT(blocked.elapsed(), 500);
    }
    bool verdictsBecome(const std::vector<bool>& expected)
    {
        return waitUntil([&] { return verdicts == expected; });
    }
    // Long enough for something that shall not be told to be told all the same.
    void settle()
    {
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < 100)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }

    NetworkManagerMock mock;
    std::unique_ptr<QtNetworkMonitor> monitor;
    std::vector<bool> verdicts;
};

struct Verdict
{
    NetworkManagerMock::State state;
    bool online;
};

class VerdictTest : public QtNetworkMonitorTest, public testing::WithParamInterface<Verdict>
{
};

TEST_P(VerdictTest, onlyADisconnectedManagerIsOffline)
{
    mock.startManager(GetParam().state);
    start();
    EXPECT_TRUE(verdictsBecome({ GetParam().online }));
}

INSTANTIATE_TEST_SUITE_P(Table, VerdictTest,
    testing::Values(Verdict{ NetworkManagerMock::unknown, true }, Verdict{ NetworkManagerMock::asleep, true },
        Verdict{ NetworkManagerMock::disconnected, false }, Verdict{ NetworkManagerMock::disconnecting, false },
        Verdict{ NetworkManagerMock::connecting, true }, Verdict{ NetworkManagerMock::connectedLocal, true },
        Verdict{ NetworkManagerMock::connectedSite, true }, Verdict{ NetworkManagerMock::connectedGlobal, true }),
    [](const auto& row) { return "state" + std::to_string(row.param.state); });

TEST_F(QtNetworkMonitorTest, changesAreToldAsTheyHappen)
{
    mock.startManager(NetworkManagerMock::connectedGlobal);
    start();
    ASSERT_TRUE(verdictsBecome({ true }));
    mock.setState(NetworkManagerMock::disconnected);
    EXPECT_TRUE(verdictsBecome({ true, false }));
    mock.setState(NetworkManagerMock::connectedGlobal);
    EXPECT_TRUE(verdictsBecome({ true, false, true }));
}

TEST_F(QtNetworkMonitorTest, anEqualVerdictIsNotToldTwice)
{
    mock.startManager(NetworkManagerMock::connectedGlobal);
    start();
    ASSERT_TRUE(verdictsBecome({ true }));
    mock.setState(NetworkManagerMock::connectedLocal);
    mock.setState(NetworkManagerMock::connectedSite);
    mock.setState(NetworkManagerMock::disconnecting);
    mock.setState(NetworkManagerMock::disconnected);
    ASSERT_TRUE(verdictsBecome({ true, false }));
    settle();
    EXPECT_EQ(verdicts, std::vector<bool>({ true, false }));
}

TEST_F(QtNetworkMonitorTest, withoutNetworkManagerItIsOnline)
{
    start();
    EXPECT_TRUE(verdictsBecome({ true }));
}

TEST_F(QtNetworkMonitorTest, withoutASystemBusItIsOnline)
{
    monitor = std::make_unique<QtNetworkMonitor>(QDBusConnection(QStringLiteral("no such connection")));
    monitor->start([this](bool online) { verdicts.push_back(online); });
    EXPECT_TRUE(verdicts.empty());
    EXPECT_TRUE(verdictsBecome({ true }));
}

TEST_F(QtNetworkMonitorTest, aManagerThatComesLaterIsBelieved)
{
    start();
    ASSERT_TRUE(verdictsBecome({ true }));
    mock.startManager(NetworkManagerMock::disconnected);
    EXPECT_TRUE(verdictsBecome({ true, false }));
}

TEST_F(QtNetworkMonitorTest, aManagerThatGoesWhileDisconnectedLeavesNoOfflineBehind)
{
    mock.startManager(NetworkManagerMock::disconnected);
    start();
    ASSERT_TRUE(verdictsBecome({ false }));
    mock.stopManager();
    EXPECT_TRUE(verdictsBecome({ false, true }));
}

TEST_F(QtNetworkMonitorTest, aManagerThatWasRestartedIsAskedAnew)
{
    mock.startManager(NetworkManagerMock::disconnected);
    start();
    ASSERT_TRUE(verdictsBecome({ false }));
    mock.stopManager();
    ASSERT_TRUE(verdictsBecome({ false, true }));
    mock.startManager(NetworkManagerMock::disconnected);
    EXPECT_TRUE(verdictsBecome({ false, true, false }));
}

TEST_F(QtNetworkMonitorTest, aManagerThatDoesNotAnswerBlocksNobodyAndCountsAsOnline)
{
    mock.startManager(NetworkManagerMock::disconnected);
    mock.freezeManager();
    start();
    EXPECT_TRUE(verdictsBecome({ true }));
}

TEST_F(QtNetworkMonitorTest, aMonitorThatIsDestroyedTellsNothing)
{
    mock.startManager(NetworkManagerMock::connectedGlobal);
    start();
    monitor.reset();
    settle();
    EXPECT_TRUE(verdicts.empty());
}

}

}
