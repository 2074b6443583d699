// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Appearance.h"

namespace velarin::test {

// Answers at once, so that the offline program shows its window without a desktop.
class FakeAppearance final : public Appearance
{
public:
    void start(std::function<void(const Wishes&)> newHandler) override
    {
        changed = std::move(newHandler);
        changed(wishes);
    }

    Wishes wishes;
    std::function<void(const Wishes&)> changed;
};

}
