// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace velarin {

enum class Renderer
{
    Software,
    Graphics,
};

// Whether a driver that calls itself so draws on the processor: then Qt's own software renderer is faster and lighter.
[[nodiscard]] bool drawsOnTheProcessor(const QByteArray& driver);

// Tries a graphics context and tells Qt Quick what to draw with. Qt 6.4 never falls back by itself: without a driver it
// ends the program. Called once, after the application object was made and before the first window. A backend that the
// user named in the environment is left alone.
Renderer chooseRenderer();

}
