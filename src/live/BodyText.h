// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/BodySniffer.h"

#include <optional>

namespace velarin::live {

// What a body is that reads as text: a playlist, an HLS playlist, or nothing to hear; NeedsMore while it is surely text
// and not all of it is there. Absent if it is no text, or so short that one cannot know.
[[nodiscard]] std::optional<BodyKind> kindOfText(QByteArrayView first, QByteArrayView contentType, bool allThere);

}
