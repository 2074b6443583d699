// SPDX-License-Identifier: GPL-3.0-or-later
// What is left behind after a thousand connects, half of them failing in different ways: nothing.
#include "RecordingListener.h"
#include "support/WaitUntil.h"
#include "support/server/Answers.h"
#include "support/server/ScriptedServer.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace velarin::live {
namespace {

using namespace std::chrono_literals;
using namespace velarin::test;

struct Holdings
{
    qsizetype descriptors{ 0 };
    qsizetype threads{ 0 };
    bool operator==(const Holdings&) const = default;
};

Holdings holdings()
{
    return { QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size(),
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size() };
}

// A sanitizer keeps what was freed, to find out who uses it still.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr qint64 memoryLimit = 1024 * 1024; // kilobytes
#else
constexpr qint64 memoryLimit = 5 * 1024;
#endif

qint64 residentKilobytes()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLongLong();
    return 0;
}

// Every second one is well.
Answer answerOf(const ServerRequest& request)
{
    const Answer well = bodyAnswer(QByteArray(20'000, 'x'), "audio/mpeg");
    switch (request.path.mid(1).toInt() % 12) {
    case 1:
        return statusAnswer(404);
    case 3:
        return statusAnswer(503);
    case 5:
        return withFault(well, Fault::Reset, 0s);
    case 7:
        return redirectAnswer(302, request.path);
    case 9: {
        Answer bare = well;
        bare.protocol.clear();
        return bare;
    }
    default:
        return well;
    }
}

class ManyConnectionsTest : public testing::Test
{
protected:
    void connectOnce(int index)
    {
        // One in twelve is refused: nobody listens on port 1.
        const QByteArray target =
            index % 12 == 11 ? QByteArray("http://127.0.0.1:1/") : m_server.url('/' + QByteArray::number(index));
        RecordingListener listener;
        std::unique_ptr<Connection> connection;
        runOn(m_thread, [&] { connection = m_thread.open({ QUrl::fromEncoded(target), {} }, listener); });
        while (!listener.calls().endsWith('e'))
            std::this_thread::sleep_for(200us);
        runOn(m_thread, [&] { connection.reset(); });
        m_well += listener.calls() == "hbe" && listener.bytes().size() == 20'000 ? 1 : 0;
    }
    // The server's own threads and sockets are gone.
    void settle()
    {
        ASSERT_TRUE(waitUntil([this] { return m_server.openConnections() == 0; }));
        std::this_thread::sleep_for(100ms);
    }

    ScriptedServer m_server{ answerOf };
    LiveThread m_thread;
    int m_well{ 0 };
};

TEST_F(ManyConnectionsTest, leaveNoDescriptorsThreadsOrMemoryBehind)
{
    for (int index = 0; index < 50; ++index)
        connectOnce(index);
    settle();
    const Holdings early = holdings();
    const qint64 memory = residentKilobytes();
    for (int index = 50; index < 1000; ++index)
        connectOnce(index);
    settle();
    EXPECT_EQ(holdings(), early) << holdings().descriptors << ' ' << holdings().threads;
    EXPECT_LT(residentKilobytes() - memory, memoryLimit);
    EXPECT_GE(m_well, 500);
}

}
}
