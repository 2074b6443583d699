// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace velarin {

// What DiskFiles does to one file, in the calling thread. Only regular files (symbolic links to them included) and
// compiled-in resources are touched: a FIFO, a device or a folder of that name is refused and never waited for.

// Absent if the file is missing, is no regular file, cannot be read or holds more than `maxBytes`.
[[nodiscard]] std::optional<QByteArray> readRegularFile(const QString& path, qint64 maxBytes);

// Whole and atomically: on disk stands the old content or the new one. False, after a line in the developer log, if it
// was not written.
bool replaceRegularFile(const QString& path, const QByteArray& content);

// Moves the file, a link's target where it is one, to NAME.unreadable beside it, over a former one. True also if there
// is no such file.
bool setAsideUnreadable(const QString& path);

// A file or a folder with all that is in it, within one file system or across two. Never over something that exists.
// False, with `error` in the developer's words, if it was not moved; `from` is whole then.
bool movePath(const QString& from, const QString& to, QString& error);

}
