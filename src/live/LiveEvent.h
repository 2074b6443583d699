// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioPlayer.h"

#include <functional>
#include <variant>

namespace velarin::live {

// What a session tells of its item, in the order in which it happens; the words are those of AudioPlayer.
struct BecameReady
{
};
struct CouldNotPlay
{
    AudioErrorChain cause;
};
struct BecameLikelyToKeepUp
{
};
struct Stalled
{
};
struct FailedToPlayToEnd
{
    AudioErrorChain cause;
};
struct PlayedToEnd
{
};
struct HttpStatusSeen
{
    int status{ 0 };
};
struct TitleHeard
{
    QString title;
};

using LiveEvent = std::variant<BecameReady, CouldNotPlay, BecameLikelyToKeepUp, Stalled, FailedToPlayToEnd, PlayedToEnd,
    HttpStatusSeen, TitleHeard, TimeControl>;

using LiveEventSink = std::function<void(LiveEvent)>;

}
