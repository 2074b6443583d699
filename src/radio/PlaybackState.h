// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <variant>

namespace velarin {

// Why the radio is silent, in kinds that decide what it does about it.
struct PlaybackFailure
{
    enum class Kind
    {
        timeout,     // no audio in time
        network,     // the connection broke
        offline,     // the machine has no network
        notFound,    // the address gives nothing
        unsupported, // the format cannot be played, or there is no address
        unknown,
    };

    Kind kind{ Kind::unknown };
    // The line that the user reads.
    QString message;
    bool operator==(const PlaybackFailure&) const = default;
};

// The case's own name, for logs.
[[nodiscard]] QString toText(PlaybackFailure::Kind kind);

// What a state can be, with what belongs to it.
struct Idle
{
    bool operator==(const Idle&) const = default;
};
// An attempt runs, or its retry is scheduled.
struct Connecting
{
    qint64 attempt{ 1 };
    qint64 maxAttempts{ 1 };
    bool operator==(const Connecting&) const = default;
};
// Sound had started and ran dry.
struct Buffering
{
    bool operator==(const Buffering&) const = default;
};
struct Playing
{
    bool operator==(const Playing&) const = default;
};
struct Paused
{
    bool operator==(const Paused&) const = default;
};
// Final, or waiting for a patient retry or for the network.
struct Failed
{
    PlaybackFailure failure;
    bool operator==(const Failed&) const = default;
};

using PlaybackState = std::variant<Idle, Connecting, Buffering, Playing, Paused, Failed>;

template<typename Case>
[[nodiscard]] bool is(const PlaybackState& state)
{
    return std::holds_alternative<Case>(state);
}

// For the developer log: "connecting(2, 5)".
[[nodiscard]] QString toText(const PlaybackState& state);

}
