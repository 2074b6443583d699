// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/server/StationProgramme.h"

#include <QByteArray>
#include <QList>
#include <QPair>

#include <chrono>
#include <memory>
#include <optional>

namespace velarin::test {

using Seconds = std::chrono::duration<double>;

// What a client asked.
struct ServerRequest
{
    // Since the server was made.
    Seconds time{ 0 };
    // The order of the requests to this path: 1 for the first one.
    int number{ 0 };
    // Path and query.
    QByteArray target;
    QByteArray path;
    // Names in lower case.
    QList<QPair<QByteArray, QByteArray>> headers;

    // Empty without one of this name.
    [[nodiscard]] QByteArray header(const QByteArray& name) const;
    // Of the query; empty without it.
    [[nodiscard]] QByteArray option(const QByteArray& name) const;
};

enum class Fault
{
    // A clean end of the connection.
    Close,
    // The connection is torn down.
    Reset,
    // No byte for `stallLength`; what would have been sent meanwhile follows then.
    Stall,
};

// What it is answered. The fields that do not matter for a case keep their defaults.
struct Answer
{
    // "HTTP/1.1", "HTTP/1.0" or "ICY"; empty: no head at all, the body comes bare.
    QByteArray protocol{ "HTTP/1.1" };
    int status{ 200 };
    QByteArray contentType{ "audio/mpeg" };
    QList<QPair<QByteArray, QByteArray>> headers;
    // The head is sent after that long; never if it is absent.
    std::optional<Seconds> headDelay{ Seconds(0) };
    bool chunked{ false };

    // The body: a programme that goes on in real time, or else these bytes with their length in the head.
    std::shared_ptr<const StationProgramme> programme;
    QByteArray body;
    // In place of the body's length; -1: no length, the connection's end is the body's.
    std::optional<qint64> announcedLength;

    // Of a programme.
    qsizetype burst{ 64 * 1024 };
    // Bytes between metadata blocks; 0: none.
    int metadataInterval{ 0 };
    // The interval is announced, and no block ever comes.
    bool intervalIsLie{ false };
    // 0.9: nine tenths of what would be due.
    double speed{ 1.0 };
    // Bytes a second after the burst, in place of the programme's pace.
    std::optional<double> trickle;

    std::optional<Fault> fault;
    // Since the answer began.
    Seconds faultAfter{ 0 };
    Seconds stallLength{ 1e9 };
};

}
