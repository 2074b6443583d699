// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QList>
#include <QUrl>

namespace velarin::live {

// No more than this of a list is read, and no more than playlistEntryLimit addresses are taken from it.
constexpr qsizetype playlistByteLimit = 64 * 1024;
constexpr qsizetype playlistEntryLimit = 100;

// The http and https addresses of an m3u or pls list, in its order (pls: in the order of the numbers), each once.
// Relative ones are resolved against `base`. Tolerant: any line end, a byte order mark, blanks, any capitals, missing
// headers, counts that lie. What is no address is passed over; a list without any gives an empty answer.
[[nodiscard]] QList<QUrl> readPlaylist(QByteArrayView bytes, const QUrl& base);

}
