// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/DiskFiles.h"

#include "platform/qt/RegularFile.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace velarin {

namespace {

constexpr int writingThreads = 2;

}

DiskFiles::DiskFiles(Executor& readers)
    : m_readers(readers)
    , m_writingThreads(std::make_unique<PoolExecutor>(writingThreads))
    , m_writer(*m_writingThreads)
{
}

DiskFiles::~DiskFiles()
{
    flush();
    m_writingThreads.reset();
}

std::optional<QByteArray> DiskFiles::readNow(const QString& path, qint64 maxBytes)
{
    return readRegularFile(path, maxBytes);
}

bool DiskFiles::exists(const QString& path)
{
    return QFileInfo::exists(path);
}

bool DiskFiles::makeFolder(const QString& path)
{
    return QDir().mkpath(path);
}

bool DiskFiles::move(const QString& from, const QString& to, QString& error)
{
    flush();
    return movePath(from, to, error);
}

Task DiskFiles::read(const QString& path, qint64 maxBytes, std::function<void(std::optional<QByteArray>)> done)
{
    return runOn(
        m_readers, [path, maxBytes] { return readRegularFile(path, maxBytes); }, std::move(done));
}

void DiskFiles::write(const QString& path, Producer produce)
{
    m_writer.write(path, std::move(produce));
}

void DiskFiles::keepUnreadable(const QString& path)
{
    m_writer.keepUnreadable(path);
}

void DiskFiles::flush()
{
    m_writer.flush();
}

}
