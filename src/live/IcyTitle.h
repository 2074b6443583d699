// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace velarin::live {

// The text of bytes that name no encoding: UTF-8 if they are valid UTF-8, else Windows-1252.
[[nodiscard]] QString textOfStreamBytes(QByteArrayView bytes);

// The title in one ICY metadata block, without its length byte; the NULs that fill it up do no harm. Absent if the
// block names no title (the former one goes on), empty if it says that there is none. The field's end is the last "';"
// that belongs to it, so that a title with an apostrophe and a semicolon inside survives.
[[nodiscard]] std::optional<QString> icyTitle(QByteArrayView block);

}
