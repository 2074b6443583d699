// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecordingListener.h"
#include "support/WaitUntil.h"
#include "support/server/Answers.h"
#include "support/server/TestAuthority.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velarin::live {
namespace {

using namespace std::chrono_literals;
using namespace velarin::test;

const QByteArray body = garbage(50'000);

// Answers everything in the way that the test says.
class ConnectionTest : public testing::Test
{
protected:
    ~ConnectionTest() override { close(); }

    void open(const QByteArray& url)
    {
        const StreamRequest request{ QUrl::fromEncoded(url),
            { { "User-Agent", "Prova/1.0" }, { "Icy-MetaData", "1" } } };
        runOn(m_thread, [&] { m_connection = m_thread.open(request, m_listener); });
    }
    void open() { open(m_server.url("/radio?x=1")); }
    void close()
    {
        runOn(m_thread, [&] { m_connection.reset(); });
    }
    [[nodiscard]] bool hasEnded() const { return m_listener.calls().endsWith('e'); }

    // The one cause, as "domain code".
    [[nodiscard]] QString cause()
    {
        EXPECT_TRUE(waitUntil([this] { return hasEnded(); }));
        const AudioErrorChain chain = m_listener.cause();
        return chain.size() == 1 ? QStringLiteral("%1 %2").arg(chain[0].domain).arg(chain[0].code) : QString();
    }
    [[nodiscard]] QString causeFor(const Answer& answer)
    {
        m_answer = answer;
        open();
        return cause();
    }

    Answer m_answer{ bodyAnswer(body, "audio/mpeg") };
    ScriptedServer m_server{ [this](const ServerRequest&) { return m_answer; } };
    RecordingListener m_listener;
    LiveThread m_thread{ TransportSettings{ {}, 1s } };
    std::unique_ptr<Connection> m_connection;
};

QString domainAndCode(const QString& domain, qint64 code)
{
    return QStringLiteral("%1 %2").arg(domain).arg(code);
}

const QString closed = QStringLiteral("closed 0");

TEST_F(ConnectionTest, tellsHeadThenBytesThenEnd)
{
    EXPECT_EQ(causeFor(m_answer), closed);
    EXPECT_EQ(m_listener.calls(), "hbe");
    EXPECT_EQ(m_listener.bytes(), body);
    EXPECT_EQ(m_listener.head().status, 200);
    EXPECT_EQ(m_listener.head().contentType, "audio/mpeg");
    EXPECT_EQ(m_listener.head().url, QUrl::fromEncoded(m_server.url("/radio?x=1")));
}

TEST_F(ConnectionTest, asksWithTheTwoHeadersAndNeverForARange)
{
    EXPECT_EQ(causeFor(m_answer), closed);
    const ServerRequest request = m_server.requests().at(0);
    EXPECT_EQ(request.target, "/radio?x=1");
    EXPECT_EQ(request.header("user-agent"), "Prova/1.0");
    EXPECT_EQ(request.header("icy-metadata"), "1");
    EXPECT_EQ(request.header("range"), "");
    EXPECT_EQ(request.header("accept-encoding"), "");
}

TEST_F(ConnectionTest, takesTheOldProtocolHttp10AndChunks)
{
    for (const char* protocol : { "ICY", "HTTP/1.0", "HTTP/1.1" }) {
        RecordingListener listener;
        m_answer.protocol = protocol;
        m_answer.announcedLength = -1;
        m_answer.chunked = m_answer.protocol == "HTTP/1.1";
        std::unique_ptr<Connection> connection;
        const StreamRequest request{ QUrl::fromEncoded(m_server.url("/")), {} };
        runOn(m_thread, [&] { connection = m_thread.open(request, listener); });
        EXPECT_TRUE(waitUntil([&] { return listener.calls() == "hbe"; })) << protocol;
        EXPECT_EQ(listener.bytes(), body) << protocol;
        EXPECT_EQ(listener.head().status, 200) << protocol;
        runOn(m_thread, [&] { connection.reset(); });
    }
}

TEST_F(ConnectionTest, tellsTheMetadataIntervalAndTheClaimedRate)
{
    m_answer.metadataInterval = 8192;
    m_answer.headers = { { "icy-br", "96" } };
    EXPECT_EQ(causeFor(m_answer), closed);
    EXPECT_EQ(m_listener.head().metadataInterval, 8192);
    EXPECT_EQ(m_listener.head().claimedBitRate, 96'000);
}

TEST_F(ConnectionTest, eachStatusThatIsNoSuccessIsToldBeforeAnyByte)
{
    for (const int status : { 204 + 100, 400, 401, 403, 404, 410, 451, 500, 502, 503 }) {
        RecordingListener listener;
        m_answer = statusAnswer(status);
        std::unique_ptr<Connection> connection;
        const StreamRequest request{ QUrl::fromEncoded(m_server.url("/")), {} };
        runOn(m_thread, [&] { connection = m_thread.open(request, listener); });
        ASSERT_TRUE(waitUntil([&] { return !listener.cause().empty(); })) << status;
        EXPECT_EQ(listener.calls(), "e") << status;
        EXPECT_EQ(listener.cause()[0].domain, AudioErrorDomain::http);
        EXPECT_EQ(listener.cause()[0].code, status);
        runOn(m_thread, [&] { connection.reset(); });
    }
}

TEST_F(ConnectionTest, anOldRefusalIsItsStatus)
{
    Answer answer = statusAnswer(401);
    answer.protocol = "ICY";
    EXPECT_EQ(causeFor(answer), QStringLiteral("http 401"));
}

TEST_F(ConnectionTest, followsRedirectsAndTellsTheLastHead)
{
    for (const int status : { 301, 302, 303, 307, 308 }) {
        ScriptedServer server([status](const ServerRequest& request) {
            return request.path == "/a" ? redirectAnswer(status, "/b") : bodyAnswer(body, "audio/aac");
        });
        RecordingListener listener;
        std::unique_ptr<Connection> connection;
        const StreamRequest request{ QUrl::fromEncoded(server.url("/a")), {} };
        runOn(m_thread, [&] { connection = m_thread.open(request, listener); });
        EXPECT_TRUE(waitUntil([&] { return listener.calls() == "hbe"; })) << status;
        EXPECT_EQ(listener.head().url.path(), QStringLiteral("/b")) << status;
        EXPECT_EQ(listener.head().contentType, "audio/aac") << status;
        EXPECT_EQ(listener.bytes(), body) << status;
        runOn(m_thread, [&] { connection.reset(); });
    }
}

TEST_F(ConnectionTest, aRedirectLoopEndsAfterTen)
{
    EXPECT_EQ(causeFor(redirectAnswer(302, "/radio")), domainAndCode(AudioErrorDomain::http, HttpError::redirectLoop));
    EXPECT_EQ(m_server.requests().size(), 11u);
    EXPECT_EQ(m_listener.calls(), "e");
}

TEST_F(ConnectionTest, aRedirectToAFileIsABadAddress)
{
    EXPECT_EQ(causeFor(redirectAnswer(302, "file:///etc/hostname")),
        domainAndCode(AudioErrorDomain::http, HttpError::badAddress));
}

TEST_F(ConnectionTest, whatIsNoAddressIsABadAddress)
{
    for (const char* url : { "ftp://127.0.0.1/", "file:///etc/hostname", "", "http://" }) {
        RecordingListener listener;
        std::unique_ptr<Connection> connection;
        const StreamRequest request{ QUrl::fromEncoded(url), {} };
        runOn(m_thread, [&] { connection = m_thread.open(request, listener); });
        ASSERT_TRUE(waitUntil([&] { return !listener.cause().empty(); })) << url;
        EXPECT_EQ(listener.cause()[0].domain, AudioErrorDomain::http) << url;
        EXPECT_EQ(listener.cause()[0].code, HttpError::badAddress) << url;
        runOn(m_thread, [&] { connection.reset(); });
    }
}

TEST_F(ConnectionTest, aBodyWithoutAHeadIsMalformed)
{
    m_answer.protocol.clear();
    EXPECT_EQ(causeFor(m_answer), domainAndCode(AudioErrorDomain::http, HttpError::malformedHead));
    EXPECT_EQ(m_listener.calls(), "e");
}

TEST_F(ConnectionTest, aHeadWithoutEndIsMalformed)
{
    for (int index = 0; index < 700; ++index)
        m_answer.headers.append({ "X-Filling", QByteArray(200, 'x') });
    EXPECT_EQ(causeFor(m_answer), domainAndCode(AudioErrorDomain::http, HttpError::malformedHead));
    EXPECT_EQ(m_listener.calls(), "e");
}

TEST_F(ConnectionTest, aBodyShorterThanAnnouncedIsClosed)
{
    m_answer.announcedLength = 2 * body.size();
    EXPECT_EQ(causeFor(m_answer), domainAndCode(AudioErrorDomain::closed, 18));
    EXPECT_EQ(m_listener.bytes(), body);
}

TEST_F(ConnectionTest, anEmptyBodyIsClosed)
{
    EXPECT_EQ(causeFor(bodyAnswer({}, "audio/mpeg")), closed);
    EXPECT_EQ(m_listener.calls(), "he");
}

TEST_F(ConnectionTest, aResetIsAReset)
{
    m_answer.announcedLength = -1;
    EXPECT_EQ(causeFor(withFault(m_answer, Fault::Reset, 100ms)).section(u' ', 0, 0), AudioErrorDomain::reset);
    EXPECT_EQ(m_listener.bytes(), body);
}

TEST_F(ConnectionTest, aClosedPortIsAConnectError)
{
    m_server.setListening(false);
    open();
    EXPECT_EQ(cause().section(u' ', 0, 0), AudioErrorDomain::connect);
}

TEST_F(ConnectionTest, aNameThatDoesNotExistIsAResolveError)
{
    open("http://no-such-host.invalid/");
    EXPECT_EQ(cause().section(u' ', 0, 0), AudioErrorDomain::resolve);
}

// A listener whose queue is full takes no more connections, and does not refuse them either.
TEST_F(ConnectionTest, aServerThatDoesNotTakeTheConnectionIsATimeOut)
{
    const int full = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(bind(full, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(listen(full, 0), 0);
    socklen_t size = sizeof address;
    getsockname(full, reinterpret_cast<sockaddr*>(&address), &size);
    std::vector<int> fillers;
    for (int index = 0; index < 4; ++index) {
        fillers.push_back(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        connect(fillers.back(), reinterpret_cast<sockaddr*>(&address), sizeof address);
    }
    open("http://127.0.0.1:" + QByteArray::number(ntohs(address.sin_port)) + '/');
    EXPECT_EQ(cause().section(u' ', 0, 0), AudioErrorDomain::timeout);
    for (const int filler : fillers)
        ::close(filler);
    ::close(full);
}

TEST_F(ConnectionTest, aSilentServerIsLeftToTheWatchdogs)
{
    m_answer = silentAnswer();
    open();
    ASSERT_TRUE(waitUntil([this] { return m_server.requests().size() == 1; }));
    std::this_thread::sleep_for(1500ms);
    EXPECT_EQ(m_listener.calls(), "");
    const auto begin = std::chrono::steady_clock::now();
    close();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 500ms);
    EXPECT_TRUE(waitUntil([this] { return m_server.openConnections() == 0; }));
}

TEST_F(ConnectionTest, closingDuringANameLookupDoesNotWait)
{
    const auto begin = std::chrono::steady_clock::now();
    open("http://no-such-host.invalid/");
    close();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 500ms);
}

TEST_F(ConnectionTest, aConnectionThatIsNotReadSlowsTheServerDown)
{
    m_answer.body = garbage(30'000'000);
    open();
    ASSERT_TRUE(waitUntil([this] { return !m_listener.bytes().isEmpty(); }));
    runOn(m_thread, [this] { m_connection->setReading(false); });
    const qsizetype before = m_listener.bytes().size();
    std::this_thread::sleep_for(300ms);
    EXPECT_EQ(m_listener.bytes().size(), before);
    EXPECT_LT(before, m_answer.body.size());
    EXPECT_EQ(m_server.openConnections(), 1);
    runOn(m_thread, [this] { m_connection->setReading(true); });
    EXPECT_EQ(cause(), closed);
    EXPECT_EQ(m_listener.bytes(), m_answer.body);
}

TEST_F(ConnectionTest, aConnectionMayBePausedBeforeItIsMade)
{
    const StreamRequest request{ QUrl::fromEncoded(m_server.url("/")), {} };
    runOn(m_thread, [&] {
        m_connection = m_thread.open(request, m_listener);
        m_connection->setReading(false);
    });
    ASSERT_TRUE(waitUntil([this] { return m_listener.calls() == "h"; }));
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(m_listener.calls(), "h");
    runOn(m_thread, [this] { m_connection->setReading(true); });
    EXPECT_EQ(cause(), closed);
    EXPECT_EQ(m_listener.bytes(), body);
}

// Destroys its connection in the call that `when` names.
class ClosingListener : public RecordingListener
{
public:
    ClosingListener(char when, std::unique_ptr<Connection>& connection)
        : m_when(when)
        , m_connection(connection)
    {
    }
    void headReceived(const StreamHead& head) override
    {
        RecordingListener::headReceived(head);
        closeAt('h');
    }
    void bytesReceived(QByteArrayView bytes) override
    {
        RecordingListener::bytesReceived(bytes);
        closeAt('b');
    }
    void ended(const AudioErrorChain& cause) override
    {
        RecordingListener::ended(cause);
        closeAt('e');
    }

private:
    void closeAt(char call)
    {
        if (call == m_when)
            m_connection.reset();
    }

    const char m_when;
    std::unique_ptr<Connection>& m_connection;
};

TEST_F(ConnectionTest, theListenerMayCloseItInAnyCall)
{
    for (const char when : { 'h', 'b', 'e' }) {
        ClosingListener listener(when, m_connection);
        const StreamRequest request{ QUrl::fromEncoded(m_server.url("/")), {} };
        runOn(m_thread, [&] { m_connection = m_thread.open(request, listener); });
        ASSERT_TRUE(waitUntil([&] { return listener.calls().endsWith(when); }));
        EXPECT_TRUE(waitUntil([this] { return m_server.openConnections() == 0; }));
        runOn(m_thread, [] {});
        EXPECT_TRUE(listener.calls().endsWith(when)) << when;
    }
}

// Over TLS, with an authority of the tests' own.
class SecureConnectionTest : public testing::Test
{
protected:
    void open(const Certificate& certificate, const QByteArray& authorities)
    {
        m_server = std::make_unique<ScriptedServer>(
            [](const ServerRequest&) { return bodyAnswer(body, "audio/mpeg"); }, certificate);
        m_thread = std::make_unique<LiveThread>(TransportSettings{ authorities, 5s });
        const StreamRequest request{ QUrl::fromEncoded(m_server->url("/")), {} };
        runOn(*m_thread, [&] { m_connection = m_thread->open(request, m_listener); });
        ASSERT_TRUE(waitUntil([this] { return m_listener.calls().endsWith('e'); }));
        runOn(*m_thread, [&] { m_connection.reset(); });
    }

    TestAuthority m_authority;
    std::unique_ptr<ScriptedServer> m_server;
    RecordingListener m_listener;
    std::unique_ptr<LiveThread> m_thread;
    std::unique_ptr<Connection> m_connection;
};

TEST_F(SecureConnectionTest, aGoodCertificateIsTrusted)
{
    open(m_authority.good(), m_authority.file());
    EXPECT_EQ(m_listener.calls(), "hbe");
    EXPECT_EQ(m_listener.bytes(), body);
    EXPECT_EQ(m_listener.cause()[0].domain, AudioErrorDomain::closed);
}

TEST_F(SecureConnectionTest, anExpiredCertificateIsNot)
{
    open(m_authority.expired(), m_authority.file());
    EXPECT_EQ(m_listener.calls(), "e");
    EXPECT_EQ(m_listener.cause()[0].domain, AudioErrorDomain::tls);
}

TEST_F(SecureConnectionTest, aCertificateForAnotherHostIsNot)
{
    open(m_authority.forAnotherHost(), m_authority.file());
    EXPECT_EQ(m_listener.calls(), "e");
    EXPECT_EQ(m_listener.cause()[0].domain, AudioErrorDomain::tls);
}

TEST_F(SecureConnectionTest, aCertificateThatNobodySignedIsNot)
{
    open(m_authority.selfSigned(), m_authority.file());
    EXPECT_EQ(m_listener.cause()[0].domain, AudioErrorDomain::tls);
}

TEST_F(SecureConnectionTest, anAuthorityThatNobodyKnowsIsNot)
{
    open(m_authority.good(), {});
    EXPECT_EQ(m_listener.cause()[0].domain, AudioErrorDomain::tls);
}

}
}
