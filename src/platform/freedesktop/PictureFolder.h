// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

#include <stop_token>

namespace velarin {

// A folder that holds one picture as PNG. Any thread, one at a time.
class PictureFolder
{
public:
    explicit PictureFolder(QString path);

    // Writes the picture, at most 512 pixels a side, under a name of its contents, and removes every other one. The
    // path of the file; empty for a null picture, a failure, or a stop that was asked for: then nothing stays behind.
    [[nodiscard]] QString keepOnly(const QImage& picture, const std::stop_token& stop) const;

    // With the pictures in it, and with nothing else.
    void remove() const;

private:
    [[nodiscard]] QString write(const QImage& picture) const;
    void removeAllBut(const QString& path) const;

    QString m_path;
};

}
