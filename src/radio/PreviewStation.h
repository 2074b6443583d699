// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/Station.h"

namespace velarin {

// A station for an address that somebody handed in, to be played without being kept. Absent if the address is none, or
// not one of the web.
[[nodiscard]] std::optional<Station> previewStation(const QString& address);

}
