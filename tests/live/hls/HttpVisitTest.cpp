// SPDX-License-Identifier: GPL-3.0-or-later
// What the requests of one station share, and bodies that come packed.
#include "live/bytes/RecordingListener.h"
#include "support/WaitUntil.h"
#include "support/server/Answers.h"
#include "support/server/ScriptedServer.h"

#include <gtest/gtest.h>

namespace velarin::live {

namespace {

using namespace std::chrono_literals;
using namespace velarin::test;

class HttpVisitTest : public testing::Test
{
protected:
    // Asks, and waits for the end.
    QByteArray fetch(const QByteArray& target, const std::shared_ptr<HttpVisit>& visit)
    {
        RecordingListener listener;
        std::unique_ptr<Connection> connection;
        const StreamRequest request{ QUrl::fromEncoded(m_server.url(target)), {}, visit };
        runOn(m_thread, [&] { connection = m_thread.open(request, listener); });
        EXPECT_TRUE(waitUntil([&] { return listener.calls().endsWith('e'); }));
        m_head = listener.head();
        runOn(m_thread, [&] { connection.reset(); });
        return listener.bytes();
    }
    [[nodiscard]] std::shared_ptr<HttpVisit> visit()
    {
        std::shared_ptr<HttpVisit> visit;
        runOn(m_thread, [&] { visit = m_thread.beginVisit(); });
        return visit;
    }

    Answer m_answer{ bodyAnswer("list", "text/plain") };
    ScriptedServer m_server{ [this](const ServerRequest&) { return m_answer; } };
    LiveThread m_thread;
    StreamHead m_head;
};

}

TEST_F(HttpVisitTest, aCookieIsBroughtBackWithinTheVisitAlone)
{
    m_answer.headers.append(qMakePair(QByteArray("Set-Cookie"), QByteArray("token=abc; Path=/")));
    const auto mine = visit();
    (void)fetch("/list", mine);
    (void)fetch("/segment", mine);
    (void)fetch("/segment", visit());
    (void)fetch("/segment", nullptr);
    const auto requests = m_server.requests();
    EXPECT_EQ(requests[0].header("cookie"), QByteArray());
    EXPECT_EQ(requests[1].header("cookie"), QByteArray("token=abc"));
    EXPECT_EQ(requests[2].header("cookie"), QByteArray());
    EXPECT_EQ(requests[3].header("cookie"), QByteArray());
}

TEST_F(HttpVisitTest, aPackedBodyIsUnpackedAlthoughNoneIsAskedFor)
{
    const QByteArray text(5000, 't');
    // qCompress() puts the size in front of what others know as deflate.
    m_answer = bodyAnswer(qCompress(text).mid(4), "text/plain");
    m_answer.headers.append(qMakePair(QByteArray("Content-Encoding"), QByteArray("deflate")));
    EXPECT_EQ(fetch("/list", visit()), text);
    EXPECT_EQ(m_server.requests().front().header("accept-encoding"), QByteArray());
    EXPECT_FALSE(m_head.length.has_value());
}

TEST_F(HttpVisitTest, theClaimedLengthIsTold)
{
    EXPECT_EQ(fetch("/list", visit()), QByteArray("list"));
    EXPECT_EQ(m_head.length, 4);
}

}
