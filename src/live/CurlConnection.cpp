// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/CurlConnection.h"

#include "live/CurlCause.h"
#include "live/CurlLoop.h"

namespace velarin::live {
namespace {

constexpr long mostRedirects = 10;
constexpr const char* protocols = "http,https";
// Old servers answer "ICY 200 OK", and "ICY 401 Service Unavailable" while their source is away. libcurl takes all of
// them for successes; our own parser reads the status.
constexpr const char* oldProtocol = "ICY ";

bool isSuccess(int status)
{
    return status >= 200 && status < 300;
}

}

CurlVisit::CurlVisit()
    : m_handle(curl_share_init())
{
    curl_share_setopt(m_handle, CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
}

CurlVisit::~CurlVisit()
{
    curl_share_cleanup(m_handle);
}

CurlConnection::CurlConnection(
    CurlLoop& loop, const TransportSettings& settings, const StreamRequest& request, ConnectionListener& listener)
    : m_loop(loop)
    , m_listener(listener)
    , m_visit(request.visit)
    , m_aliases(curl_slist_append(nullptr, oldProtocol))
    , m_handle(curl_easy_init())
{
    setUp(settings, request);
    m_loop.add(*this);
}

CurlConnection::~CurlConnection()
{
    m_loop.remove(*this);
}

CurlConnection& CurlConnection::of(CURL* handle)
{
    CurlConnection* connection = nullptr;
    curl_easy_getinfo(handle, CURLINFO_PRIVATE, &connection);
    return *connection;
}

void CurlConnection::setUp(const TransportSettings& settings, const StreamRequest& request)
{
    CURL* const curl = m_handle.get();
    curl_easy_setopt(curl, CURLOPT_URL, request.url.toEncoded(QUrl::RemoveFragment).constData());
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(settings.connectTimeout.count()));
    if (!settings.certificateAuthorities.isEmpty())
        curl_easy_setopt(curl, CURLOPT_CAINFO, settings.certificateAuthorities.constData());
    setUpCallbacks();
    setUpProtocol();
    setUpHeaders(request);
    setUpSharing(request);
}

void CurlConnection::setUpCallbacks()
{
    CURL* const curl = m_handle.get();
    curl_easy_setopt(curl, CURLOPT_PRIVATE, this);
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, m_errorText.data());
    curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, &CurlConnection::headerCallback);
    curl_easy_setopt(curl, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &CurlConnection::bodyCallback);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, this);
}

void CurlConnection::setUpProtocol()
{
    CURL* const curl = m_handle.get();
    // Over HTTP/2 a transfer that is not read goes on filling its window.
    curl_easy_setopt(curl, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(curl, CURLOPT_HTTP09_ALLOWED, 0L);
    curl_easy_setopt(curl, CURLOPT_HTTP200ALIASES, m_aliases.get());
    curl_easy_setopt(curl, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, mostRedirects);
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, protocols);
    curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, protocols);
    curl_easy_setopt(curl, CURLOPT_TCP_KEEPALIVE, 1L);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    // Closing during a name lookup would otherwise wait for its thread: seconds, where the name server is silent.
    curl_easy_setopt(curl, CURLOPT_QUICK_EXIT, 1L);
}

void CurlConnection::setUpHeaders(const StreamRequest& request)
{
    for (const auto& [name, value] : request.headers) {
        const QByteArray line = name + ": " + value;
        m_headers.reset(curl_slist_append(m_headers.release(), line.constData()));
    }
    // A body that comes packed is unpacked, although none is asked for.
    m_headers.reset(curl_slist_append(m_headers.release(), "Accept-Encoding:"));
    curl_easy_setopt(m_handle.get(), CURLOPT_ACCEPT_ENCODING, "");
    curl_easy_setopt(m_handle.get(), CURLOPT_HTTPHEADER, m_headers.get());
}

void CurlConnection::setUpSharing(const StreamRequest& request)
{
    CURL* const curl = m_handle.get();
    if (const auto* visit = static_cast<const CurlVisit*>(m_visit.get())) {
        curl_easy_setopt(curl, CURLOPT_SHARE, visit->handle());
        // Reads none, and so keeps them in memory alone.
        curl_easy_setopt(curl, CURLOPT_COOKIEFILE, "");
    }
    if (request.sharesConnection)
        return;
    curl_easy_setopt(curl, CURLOPT_FRESH_CONNECT, 1L);
    curl_easy_setopt(curl, CURLOPT_FORBID_REUSE, 1L);
}

void CurlConnection::setReading(bool reading)
{
    if (m_reading == reading)
        return;
    m_reading = reading;
    curl_easy_pause(m_handle.get(), reading ? CURLPAUSE_CONT : CURLPAUSE_RECV);
}

size_t CurlConnection::headerCallback(char* data, size_t size, size_t count, void* self)
{
    const std::size_t bytes = size * count;
    const auto length = static_cast<qsizetype>(bytes);
    return static_cast<CurlConnection*>(self)->takeHeadLine({ data, length }) ? bytes : 0;
}

size_t CurlConnection::bodyCallback(char* data, size_t size, size_t count, void* self)
{
    CurlConnection& connection = *static_cast<CurlConnection*>(self);
    // A pause asked for while the connection was still being made has to be said again.
    if (!connection.m_reading)
        return CURL_WRITEFUNC_PAUSE;
    const std::size_t bytes = size * count;
    connection.m_bytes.append(data, static_cast<qsizetype>(bytes));
    return bytes;
}

bool CurlConnection::takeHeadLine(QByteArrayView line)
{
    // After the body of a chunked answer more lines may come.
    if (m_parser.state() == StreamHeadParser::State::Complete)
        return true;
    switch (m_parser.readLine(line)) {
    case StreamHeadParser::State::Reading:
    case StreamHeadParser::State::Passed:
        return true;
    case StreamHeadParser::State::Malformed:
        return false;
    case StreamHeadParser::State::Complete:
        break;
    }
    if (!isSuccess(m_parser.head().status))
        return false;
    m_head = m_parser.head();
    m_head->url = effectiveUrl();
    return true;
}

QUrl CurlConnection::effectiveUrl() const
{
    const char* url = nullptr;
    curl_easy_getinfo(m_handle.get(), CURLINFO_EFFECTIVE_URL, &url);
    return QUrl::fromEncoded(QByteArray(url));
}

void CurlConnection::noteEnd(CURLcode result)
{
    TransferEnd end;
    end.result = result;
    end.head = m_parser.state();
    end.status = m_parser.head().status;
    curl_easy_getinfo(m_handle.get(), CURLINFO_OS_ERRNO, &end.systemError);
    curl_easy_getinfo(m_handle.get(), CURLINFO_REQUEST_SIZE, &end.requestBytes);
    end.text = QString::fromUtf8(m_errorText.data());
    m_cause = causeOf(end);
}

void CurlConnection::tellNext()
{
    // The listener may destroy this: what it is told is taken out before.
    if (const std::optional<StreamHead> head = std::exchange(m_head, std::nullopt))
        m_listener.headReceived(*head);
    else if (const QByteArray bytes = std::exchange(m_bytes, {}); !bytes.isEmpty())
        m_listener.bytesReceived(bytes);
    else if (const std::optional<AudioErrorChain> cause = std::exchange(m_cause, std::nullopt))
        m_listener.ended(*cause);
}

}
