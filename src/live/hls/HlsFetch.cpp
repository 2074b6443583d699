// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsFetch.h"

#include <algorithm>
#include <utility>

namespace velarin::live {

HlsRequests::HlsRequests(ConnectionFactory& connections, StreamRequest item)
    : m_connections(connections)
    , m_item(std::move(item))
{
    if (!m_item.visit)
        m_item.visit = m_connections.beginVisit();
    m_item.sharesConnection = true;
}

std::unique_ptr<Connection> HlsRequests::open(
    const QUrl& url, const std::optional<HlsByteRange>& range, ConnectionListener& listener) const
{
    StreamRequest request = m_item;
    request.url = url;
    if (range) {
        const QByteArray from = QByteArray::number(range->offset);
        const QByteArray to = QByteArray::number(range->offset + range->length - 1);
        request.headers.append({ "Range", "bytes=" + from + "-" + to });
    }
    return m_connections.open(request, listener);
}

HlsFetch::HlsFetch(const HlsRequests& requests, Order order, HlsFetchListener& listener)
    : m_order(std::move(order))
    , m_listener(listener)
    , m_url(m_order.url)
    , m_skip(m_order.have)
{
    if (m_order.range)
        m_wanted = m_order.range->length - m_order.have;
    m_connection = requests.open(m_order.url, m_order.range, *this);
}

HlsFetch::~HlsFetch() = default;

void HlsFetch::setReading(bool reading)
{
    if (m_connection)
        m_connection->setReading(reading);
}

void HlsFetch::headReceived(const StreamHead& head)
{
    if (!head.url.isEmpty())
        m_url = head.url;
    m_length = head.length;
    // A server that knows no ranges sends everything.
    constexpr int partialContent = 206;
    if (m_order.range && head.status != partialContent) {
        m_skip += m_order.range->offset;
        m_length.reset();
    }
}

void HlsFetch::bytesReceived(QByteArrayView bytes)
{
    const qint64 passed = std::min<qint64>(m_skip, bytes.size());
    m_skip -= passed;
    QByteArrayView news = bytes.sliced(passed);
    if (m_wanted)
        news = news.first(std::min<qint64>(news.size(), *m_wanted));
    if (news.isEmpty())
        return;
    if (!m_wanted) {
        m_listener.fetched(news);
        return;
    }
    *m_wanted -= news.size();
    if (*m_wanted > 0) {
        m_listener.fetched(news);
        return;
    }
    // The rest of the answer is not wanted. The bytes live as long as this call.
    m_connection.reset();
    const std::weak_ptr<int> alive = m_alive;
    m_listener.fetched(news);
    if (!alive.expired())
        m_listener.fetchEnded({});
}

void HlsFetch::ended(const AudioErrorChain& told)
{
    const AudioError first = told.front();
    const bool isWhole = first.domain == AudioErrorDomain::closed && first.code == 0;
    if (!isWhole)
        m_listener.fetchEnded(AudioErrorChain(told));
    else if (m_wanted && *m_wanted > 0)
        m_listener.fetchEnded(
            { { AudioErrorDomain::closed, first.code, QStringLiteral("shorter than the list says") } });
    else
        m_listener.fetchEnded({});
}

}
