// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Task.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace velarin {

// The disk as the logic sees it. Called on the main thread; paths are absolute, ":/..." names a compiled-in resource.
// Nothing here throws or reports to the user: what cannot be read is absent, what cannot be written is ignored after a
// line in the developer log.
class Files
{
public:
    // Makes the bytes of a file, off the main thread, from values that it owns.
    using Producer = std::function<QByteArray()>;

    virtual ~Files() = default;

    // For the few files that must be known before the first event (settings, log, former folders), at start-up only.
    // Absent if the file is missing, cannot be read or holds more than `maxBytes`.
    [[nodiscard]] virtual std::optional<QByteArray> readNow(const QString& path, qint64 maxBytes) = 0;
    [[nodiscard]] virtual bool exists(const QString& path) = 0;
    // With all folders above it. True also if it is there already.
    virtual bool makeFolder(const QString& path) = 0;
    // Within one file system or across two. False, with `error` in the developer's words, if it was not moved.
    virtual bool move(const QString& from, const QString& to, QString& error) = 0;

    // Off the main thread; `done` on the main thread, in a later turn. Absent as for readNow().
    [[nodiscard]] virtual Task read(
        const QString& path, qint64 maxBytes, std::function<void(std::optional<QByteArray>)> done) = 0;

    // Writes the file whole and atomically, off the main thread. Writes to one path keep their order: the last one
    // asked for is what ends on disk, and those between may be left out. The folder must exist.
    virtual void write(const QString& path, Producer produce) = 0;

    // The file was there and did not decode: before the next write replaces it, it is kept beside as
    // NAME.unreadable (one generation).
    virtual void keepUnreadable(const QString& path) = 0;

    // Waits until every write asked for is on disk. At quit only.
    virtual void flush() = 0;
};

}
