// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Connection.h"

#include <functional>
#include <memory>
#include <vector>

namespace velarin::live::test {

// One connection that a test plays the server of.
class FakeConnection
{
public:
    FakeConnection(StreamRequest asked, ConnectionListener& toTell)
        : request(std::move(asked))
        , m_listener(&toTell)
    {
    }

    // The engine keeps it open.
    [[nodiscard]] bool isOpen() const { return m_listener != nullptr; }
    void head(const QByteArray& contentType = "audio/mpeg", std::optional<qint64> metadataInterval = std::nullopt);
    // With a head before the first ones. Bytes that are not read are kept until they are.
    void bytes(const QByteArray& bytes);
    void end(const AudioErrorChain& cause);
    void close() { end({ { AudioErrorDomain::closed, 0, QStringLiteral("closed") } }); }
    void reset() { end({ { AudioErrorDomain::reset, 56, QStringLiteral("reset") } }); }
    void answer(int status) { end({ { AudioErrorDomain::http, status, QStringLiteral("answer") } }); }

    const StreamRequest request;
    bool isReading{ true };

private:
    friend class FakeConnections;
    void deliver();

    ConnectionListener* m_listener;
    bool m_hasHead{ false };
    QByteArray m_kept;
};

class FakeConnections final : public ConnectionFactory
{
public:
    [[nodiscard]] std::unique_ptr<Connection> open(const StreamRequest& request, ConnectionListener& listener) override;

    // All that were ever opened, in order.
    std::vector<std::shared_ptr<FakeConnection>> all;
    [[nodiscard]] FakeConnection& last() { return *all.back(); }
    [[nodiscard]] std::size_t open() const;
};

}
