// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FakeFiles.h"

#include <utility>

namespace velarin::test {

std::optional<QByteArray> FakeFiles::readNow(const QString& path, qint64 maxBytes)
{
    const auto found = contents.constFind(path);
    if (found == contents.constEnd() || found->size() > maxBytes)
        return std::nullopt;
    return *found;
}

bool FakeFiles::exists(const QString& path)
{
    return contents.contains(path) || folders.contains(path);
}

bool FakeFiles::makeFolder(const QString& path)
{
    folders.insert(path);
    return true;
}

bool FakeFiles::move(const QString& from, const QString& to, QString& error)
{
    if (immovable.contains(from) || !exists(from) || exists(to)) {
        error = QStringLiteral("cannot move");
        return false;
    }
    if (folders.remove(from))
        folders.insert(to);
    QMap<QString, QByteArray> moved;
    for (auto file = contents.cbegin(); file != contents.cend(); ++file) {
        const bool inside = file.key() == from || file.key().startsWith(from + u'/');
        moved.insert(inside ? to + file.key().mid(from.size()) : file.key(), file.value());
    }
    contents = std::move(moved);
    return true;
}

Task FakeFiles::read(const QString& path, qint64 maxBytes, std::function<void(std::optional<QByteArray>)> done)
{
    auto pending = std::make_shared<PendingRead>(PendingRead{ path, maxBytes, std::move(done) });
    m_reads.push_back(pending);
    return Task([weak = std::weak_ptr(pending)] {
        if (auto alive = weak.lock())
            alive->done = {};
    });
}

void FakeFiles::write(const QString& path, Producer produce)
{
    if (m_unreadable.remove(path) && contents.contains(path))
        contents.insert(path + QStringLiteral(".unreadable"), contents.value(path));
    contents.insert(path, produce());
    written.append(path);
}

void FakeFiles::keepUnreadable(const QString& path)
{
    m_unreadable.insert(path);
}

void FakeFiles::deliverReads()
{
    while (!m_reads.empty()) {
        const auto reads = std::exchange(m_reads, {});
        for (const auto& pending : reads) {
            if (auto done = std::exchange(pending->done, {}))
                done(readNow(pending->path, pending->maxBytes));
        }
    }
}

}
