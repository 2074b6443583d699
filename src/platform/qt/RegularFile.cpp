// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/RegularFile.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSaveFile>

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdio>
#include <filesystem>

namespace velarin {

namespace {

Q_LOGGING_CATEGORY(logFiles, "com.brenholt.velarin.files")

bool openForReading(QFile& file, const QString& path)
{
    if (path.startsWith(u':')) {
        file.setFileName(path);
        return file.open(QIODevice::ReadOnly);
    }
    // Without O_NONBLOCK, opening a FIFO waits for somebody to write to it.
    const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    struct stat status
    {
    };
    if (descriptor < 0)
        return false;
    const bool adopted = file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    return adopted && fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

bool mayBeReplaced(const QString& path)
{
    const QFileInfo present(path);
    return !present.exists() || present.isFile();
}

std::filesystem::path nativePath(const QString& path)
{
    return { QFile::encodeName(path).toStdString() };
}

QString words(const std::error_code& failure)
{
    return QString::fromStdString(failure.message());
}

// Into a name of its own first, so that a copy that breaks off is never taken for the moved thing.
std::error_code copyAcross(const std::filesystem::path& from, const std::filesystem::path& to)
{
    namespace fs = std::filesystem;
    std::error_code failure;
    std::error_code ignored;
    const fs::path partial = to.native() + ".partial";
    fs::remove_all(partial, ignored);
    fs::copy(from, partial, fs::copy_options::recursive | fs::copy_options::copy_symlinks, failure);
    if (!failure)
        fs::rename(partial, to, failure);
    if (failure)
        fs::remove_all(partial, ignored);
    else
        fs::remove_all(from, ignored);
    return failure;
}

}

std::optional<QByteArray> readRegularFile(const QString& path, qint64 maxBytes)
{
    QFile file;
    if (!openForReading(file, path) || file.size() > maxBytes)
        return std::nullopt;
    // One byte more than allowed shows a file that grew meanwhile.
    QByteArray content = file.read(maxBytes + 1);
    if (file.error() != QFileDevice::NoError || content.size() > maxBytes)
        return std::nullopt;
    return content;
}

bool replaceRegularFile(const QString& path, const QByteArray& content)
{
    if (!mayBeReplaced(path)) {
        qCWarning(logFiles) << "not written, no regular file:" << path;
        return false;
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit())
        return true;
    qCWarning(logFiles) << "not written:" << path << file.errorString();
    return false;
}

bool setAsideUnreadable(const QString& path)
{
    const QString present = QFileInfo(path).canonicalFilePath();
    if (present.isEmpty())
        return true;
    const QByteArray from = QFile::encodeName(present);
    if (std::rename(from.constData(), (from + ".unreadable").constData()) == 0)
        return true;
    qCWarning(logFiles) << "cannot be kept beside:" << path;
    return false;
}

bool movePath(const QString& from, const QString& to, QString& error)
{
    const std::filesystem::path source = nativePath(from);
    const std::filesystem::path destination = nativePath(to);
    std::error_code failure;
    if (std::filesystem::exists(std::filesystem::symlink_status(destination, failure)))
        failure = std::make_error_code(std::errc::file_exists);
    else
        std::filesystem::rename(source, destination, failure);
    if (failure == std::errc::cross_device_link)
        failure = copyAcross(source, destination);
    error = failure ? words(failure) : QString();
    return !failure;
}

}
