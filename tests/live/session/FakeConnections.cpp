// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/FakeConnections.h"

#include <algorithm>
#include <utility>

namespace velarin::live::test {

namespace {

class Handle final : public Connection
{
public:
    Handle(std::shared_ptr<FakeConnection> connection, std::function<void()> closed)
        : m_connection(std::move(connection))
        , m_closed(std::move(closed))
    {
    }
    ~Handle() override { m_closed(); }
    void setReading(bool reading) override { m_connection->isReading = reading; }

private:
    std::shared_ptr<FakeConnection> m_connection;
    std::function<void()> m_closed;
};

}

void FakeConnection::head(const QByteArray& contentType, std::optional<qint64> metadataInterval)
{
    m_hasHead = true;
    if (m_listener)
        m_listener->headReceived(StreamHead{ 200, request.url, contentType, metadataInterval, std::nullopt });
}

void FakeConnection::bytes(const QByteArray& bytes)
{
    m_kept += bytes;
    deliver();
}

void FakeConnection::deliver()
{
    if (!isReading || m_kept.isEmpty())
        return;
    if (m_listener && !m_hasHead)
        head();
    const QByteArray bytes = std::exchange(m_kept, {});
    if (m_listener)
        m_listener->bytesReceived(bytes);
}

void FakeConnection::end(const AudioErrorChain& cause)
{
    if (ConnectionListener* const listener = std::exchange(m_listener, nullptr))
        listener->ended(cause);
}

std::unique_ptr<Connection> FakeConnections::open(const StreamRequest& request, ConnectionListener& listener)
{
    auto connection = std::make_shared<FakeConnection>(request, listener);
    all.push_back(connection);
    return std::make_unique<Handle>(connection, [connection] { connection->m_listener = nullptr; });
}

std::size_t FakeConnections::open() const
{
    return static_cast<std::size_t>(
        std::count_if(all.begin(), all.end(), [](const auto& connection) { return connection->isOpen(); }));
}

}
