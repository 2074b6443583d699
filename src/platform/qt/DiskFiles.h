// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Files.h"
#include "platform/qt/OrderedWriter.h"

namespace velarin {

// The real disk. Reads run on the executor that it is given, writes on two threads of its own, so that neither a long
// parse nor one large file holds up the settings.
class DiskFiles final : public Files
{
public:
    // `readers` must outlive this.
    explicit DiskFiles(Executor& readers);
    // Flushes.
    ~DiskFiles() override;

    std::optional<QByteArray> readNow(const QString& path, qint64 maxBytes) override;
    bool exists(const QString& path) override;
    bool makeFolder(const QString& path) override;
    // Waits for the writes under way first, so that none lands where the thing was.
    bool move(const QString& from, const QString& to, QString& error) override;
    Task read(const QString& path, qint64 maxBytes, std::function<void(std::optional<QByteArray>)> done) override;
    void write(const QString& path, Producer produce) override;
    void keepUnreadable(const QString& path) override;
    void flush() override;

private:
    Executor& m_readers;
    // The writer's work runs on the threads, so these go first.
    std::unique_ptr<PoolExecutor> m_writingThreads;
    OrderedWriter m_writer;
};

}
