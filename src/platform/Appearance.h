// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace velarin {

enum class ColorScheme
{
    Light,
    Dark,
};

// What the desktop wishes for the looks of programs. Main thread only.
class Appearance
{
public:
    struct Wishes
    {
        ColorScheme scheme{ ColorScheme::Dark };
        bool reducedMotion{ false };
        bool highContrast{ false };
        bool operator==(const Wishes&) const = default;
    };

    virtual ~Appearance() = default;

    // Calls `changed` with the desktop's wishes: once within 300 ms, so that the first window can wait for it, then at
    // each change. Called once. Where the desktop says nothing, the palette is judged.
    virtual void start(std::function<void(const Wishes&)> changed) = 0;
};

}
