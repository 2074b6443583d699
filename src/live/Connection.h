// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioPlayer.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QPair>
#include <QUrl>

#include <memory>
#include <optional>

namespace velarin::live {

// What the requests for one item share: their cookies, kept until the last of them is gone.
class HttpVisit
{
public:
    virtual ~HttpVisit() = default;
};

struct StreamRequest
{
    QUrl url;
    QList<QPair<QByteArray, QByteArray>> headers;
    // Absent: no cookies.
    std::shared_ptr<HttpVisit> visit{};
    // Where more requests follow: the connection may be one that is open already, and stays open for the next.
    bool sharesConnection{ false };
};

// The head of the answer that gives the body: the last one of a chain of redirects.
struct StreamHead
{
    // As the server gave it; 200 for "ICY 200 OK".
    int status{ 0 };
    // After redirects.
    QUrl url;
    // The media type alone, lower case, without parameters; empty if none was given.
    QByteArray contentType;
    // Bytes of sound between two metadata blocks; absent without any.
    std::optional<qint64> metadataInterval;
    // Bits per second as the server claims it ("icy-br"); absent if it does not.
    std::optional<qint64> claimedBitRate;
    // Bytes of the body, as the server claims; absent if it does not, or packs them.
    std::optional<qint64> length{};
};

// One connection for one body. Everything on the engine's thread.
//
// Order of calls: headReceived() at most once and before the first byte, bytesReceived() any number of times, ended()
// exactly once and last, unless the connection is destroyed first: then nothing more comes. Nothing is called from
// inside open(). The listener may destroy the connection from inside any call.
class ConnectionListener
{
public:
    virtual ~ConnectionListener() = default;

    virtual void headReceived(const StreamHead& head) = 0;
    // Valid during the call only.
    virtual void bytesReceived(QByteArrayView bytes) = 0;
    // Why it ended: a chain with one of the domains http (no success, malformed, redirect loop, bad address), resolve,
    // connect, tls, closed (a clean end of the body, and a body shorter than announced), reset, timeout. Never empty.
    virtual void ended(const AudioErrorChain& cause) = 0;
};

// Closes when destroyed.
class Connection
{
public:
    virtual ~Connection() = default;

    // Stops taking bytes from the socket, so that the server is slowed down, and goes on later.
    virtual void setReading(bool reading) = 0;
};

class ConnectionFactory
{
public:
    virtual ~ConnectionFactory() = default;

    [[nodiscard]] virtual std::unique_ptr<Connection> open(
        const StreamRequest& request, ConnectionListener& listener) = 0;
    // Absent where cookies are not kept.
    [[nodiscard]] virtual std::shared_ptr<HttpVisit> beginVisit() { return nullptr; }
};

}
