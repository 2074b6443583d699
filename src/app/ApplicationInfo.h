// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "diagnostics/Diagnostics.h"

namespace velarin {

// Version and build of this program, and the distribution's own name for itself.
[[nodiscard]] ApplicationInfo applicationInfo();

}
