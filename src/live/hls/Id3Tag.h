// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace velarin::live {

// ID3v2 tags (id3.org, id3v2.2 to id3v2.4), as far as a radio uses them: before packed audio and as timed metadata.

// A tag's header, without which its size is not known.
constexpr qsizetype id3HeaderSize = 10;

// Bytes of the tag that begins here, with its header and footer; absent where none begins. `bytes` need not hold all of
// it, but its header.
[[nodiscard]] std::optional<qsizetype> id3TagSize(QByteArrayView bytes);

// The title frame (TIT2; TT2 in version 2) of the tag that begins here: its first text, empty if it says that there is
// none. Absent if the tag holds no title, or does not hold together.
[[nodiscard]] std::optional<QString> id3Title(QByteArrayView tag);

}
