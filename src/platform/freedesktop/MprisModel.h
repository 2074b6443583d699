// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Clock.h"
#include "platform/MediaControls.h"
#include "platform/freedesktop/MprisState.h"
#include "platform/freedesktop/MprisTime.h"

#include <QDBusObjectPath>

namespace velarin {

// What the two interfaces of the exported object share: what is shown, and whom a command reaches.
struct MprisModel
{
    Clock& clock;
    MediaControls::Handlers handlers;
    MediaControls::ApplicationHandlers application;
    MprisState shown;
    MprisTime time;
    // Of the item shown; absent with nothing loaded.
    std::optional<QDBusObjectPath> track;
    bool canSkip{ false };
};

}
