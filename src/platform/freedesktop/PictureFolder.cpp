// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/PictureFolder.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QSaveFile>

namespace velarin {

namespace {

// As large as a desktop shows it, also on a dense screen; more only costs time and memory.
constexpr int longestSide = 512;

QByteArray encoded(const QImage& picture)
{
    const bool isLarge = picture.width() > longestSide || picture.height() > longestSide;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    (isLarge ? picture.scaled(longestSide, longestSide, Qt::KeepAspectRatio, Qt::SmoothTransformation) : picture)
        .save(&buffer, "PNG");
    return buffer.data();
}

QString nameOf(const QByteArray& bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex()) +
           QStringLiteral(".png");
}

}

PictureFolder::PictureFolder(QString path)
    : m_path(std::move(path))
{
}

QString PictureFolder::keepOnly(const QImage& picture, const std::stop_token& stop) const
{
    const QString path = picture.isNull() || stop.stop_requested() ? QString() : write(picture);
    if (stop.stop_requested()) {
        remove();
        return {};
    }
    removeAllBut(path);
    return path;
}

QString PictureFolder::write(const QImage& picture) const
{
    const QByteArray bytes = encoded(picture);
    if (bytes.isEmpty() || !QDir().mkpath(m_path))
        return {};
    QSaveFile file(QDir(m_path).filePath(nameOf(bytes)));
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write(bytes);
    return file.commit() ? file.fileName() : QString();
}

void PictureFolder::removeAllBut(const QString& path) const
{
    QDir folder(m_path);
    const QStringList names = folder.entryList({ QStringLiteral("*.png*") }, QDir::Files);
    for (const QString& name : names) {
        if (folder.filePath(name) != path)
            folder.remove(name);
    }
}

void PictureFolder::remove() const
{
    removeAllBut({});
    QDir().rmdir(m_path);
}

}
