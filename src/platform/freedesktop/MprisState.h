// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/MediaControls.h"

#include <QString>
#include <QVariantMap>

namespace velarin {

// The properties of org.mpris.MediaPlayer2.Player that change and say so. (Position changes without saying so.)
struct MprisState
{
    QString playbackStatus{ QStringLiteral("Stopped") };
    QVariantMap metadata;
    double volume{ 1.0 };
    bool canGoNext{ false };
    bool canGoPrevious{ false };
    bool canSeek{ false };
    bool operator==(const MprisState&) const = default;
};

[[nodiscard]] QString mprisStatus(NowPlayingState state);

// What PropertiesChanged must carry for a listener that knows `told` to know `now`; empty if nothing.
[[nodiscard]] QVariantMap changedProperties(const MprisState& told, const MprisState& now);

}
