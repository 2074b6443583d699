// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Connection.h"
#include "live/hls/HlsPlaylist.h"

#include <memory>

namespace velarin::live {

// How one HLS station is asked: all requests carry the item's headers, and share cookies and connections.
class HlsRequests
{
public:
    // Of `item`, whose address is left aside.
    HlsRequests(ConnectionFactory& connections, StreamRequest item);

    [[nodiscard]] std::unique_ptr<Connection> open(
        const QUrl& url, const std::optional<HlsByteRange>& range, ConnectionListener& listener) const;

private:
    ConnectionFactory& m_connections;
    StreamRequest m_item;
};

// On the engine's thread. The fetch may be destroyed from inside any of the calls; nothing comes after fetchEnded().
class HlsFetchListener
{
public:
    virtual ~HlsFetchListener() = default;

    // Valid during the call only.
    virtual void fetched(QByteArrayView bytes) = 0;
    // An empty cause: all of it is there. Otherwise why it is not.
    virtual void fetchEnded(const AudioErrorChain& cause) = 0;
};

// One answer, or a range of it.
class HlsFetch final : private ConnectionListener
{
public:
    struct Order
    {
        QUrl url;
        std::optional<HlsByteRange> range;
        // So much of what is asked for is there already from an answer that broke off, and is passed over.
        qint64 have{ 0 };
    };

    HlsFetch(const HlsRequests& requests, Order order, HlsFetchListener& listener);
    ~HlsFetch() override;
    HlsFetch(const HlsFetch&) = delete;
    HlsFetch& operator=(const HlsFetch&) = delete;

    void setReading(bool reading);
    // After redirects.
    [[nodiscard]] const QUrl& url() const { return m_url; }
    // Of the whole answer, as the server claims it.
    [[nodiscard]] std::optional<qint64> length() const { return m_length; }

private:
    void headReceived(const StreamHead& head) override;
    void bytesReceived(QByteArrayView bytes) override;
    void ended(const AudioErrorChain& cause) override;

    const Order m_order;
    HlsFetchListener& m_listener;
    QUrl m_url;
    std::optional<qint64> m_length;
    // Still to be passed over, and still wanted after that.
    qint64 m_skip{ 0 };
    std::optional<qint64> m_wanted;
    std::unique_ptr<Connection> m_connection;
    // Expires with this: the listener may destroy it while it is told.
    const std::shared_ptr<int> m_alive{ std::make_shared<int>(0) };
};

}
