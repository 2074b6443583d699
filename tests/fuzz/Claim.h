// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>

namespace velarin::fuzz {

// What must hold for every input; the fuzzer keeps the one for which it does not.
inline void claim(bool holds)
{
    if (!holds)
        std::abort();
}

}
