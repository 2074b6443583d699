// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "offline/OfflineProgram.h"

#include <QSize>
#include <QString>

namespace velarin::test {

// What a picture of the window shall show.
struct ScreenshotWish
{
    QString file;
    QSize size{ 1180, 780 };
    // "idle", "playing", "untitled", "connecting", "failed", "muted", "focus", "menu", "context" or "devices".
    QString state{ QStringLiteral("playing") };
};

// How the stations behave for a state to come about.
[[nodiscard]] StationsBehaviour behaviourFor(const QString& state);

// Brings the program into the state, saves the picture and ends the application, with 0 if it was saved.
void takeScreenshot(OfflineProgram& program, const ScreenshotWish& wish);

}
