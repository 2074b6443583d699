// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Paths.h"

namespace velarin {

class Defaults;
class Files;

// Takes over what two former names of the program left behind, and makes the program's folders. Once at start-up,
// before anything else asks the disk; what fails is told in the developer log and left where it is.
//
// A folder or file is moved only where the new place does not exist yet, so nothing may be made in it before. The
// former settings are copied in the first run only; a setting that is there already wins.
[[nodiscard]] Paths migrate(const BaseFolders& folders, Files& files, Defaults& defaults);

}
