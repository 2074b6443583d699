// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/PlaybackState.h"

#include "base/Overloaded.h"

namespace velarin {

QString toText(PlaybackFailure::Kind kind)
{
    switch (kind) {
    case PlaybackFailure::Kind::timeout:
        return QStringLiteral("timeout");
    case PlaybackFailure::Kind::network:
        return QStringLiteral("network");
    case PlaybackFailure::Kind::offline:
        return QStringLiteral("offline");
    case PlaybackFailure::Kind::notFound:
        return QStringLiteral("notFound");
    case PlaybackFailure::Kind::unsupported:
        return QStringLiteral("unsupported");
    case PlaybackFailure::Kind::unknown:
        break;
    }
    return QStringLiteral("unknown");
}

QString toText(const PlaybackState& state)
{
    const Overloaded describe{
        [](const Idle&) { return QStringLiteral("idle"); },
        [](const Connecting& connecting) {
            return QStringLiteral("connecting(%1, %2)").arg(connecting.attempt).arg(connecting.maxAttempts);
        },
        [](const Buffering&) { return QStringLiteral("buffering"); },
        [](const Playing&) { return QStringLiteral("playing"); },
        [](const Paused&) { return QStringLiteral("paused"); },
        [](const Failed& failed) { return QStringLiteral("failed(%1)").arg(toText(failed.failure.kind)); },
    };
    return std::visit(describe, state);
}

}
