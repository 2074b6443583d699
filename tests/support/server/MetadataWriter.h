// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace velarin::test {

// Puts ICY metadata blocks between the bytes of one body: a new title every ten seconds of the connection, "Artista -
// Brano 1" and so on, and empty blocks in between. By default it puts in nothing.
class MetadataWriter
{
public:
    MetadataWriter() = default;
    explicit MetadataWriter(int interval);

    [[nodiscard]] QByteArray write(const QByteArray& sound, double seconds);

private:
    [[nodiscard]] QByteArray block(double seconds);

    int m_interval{ 0 };
    qsizetype m_untilBlock{ 0 };
    int m_lastSong{ 0 };
};

}
