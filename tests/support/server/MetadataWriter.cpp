// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/server/MetadataWriter.h"

#include <algorithm>

namespace velarin::test {
namespace {

constexpr double secondsPerSong = 10.0;

}

MetadataWriter::MetadataWriter(int interval)
    : m_interval(interval)
    , m_untilBlock(interval)
{
}

QByteArray MetadataWriter::write(const QByteArray& sound, double seconds)
{
    if (m_interval == 0)
        return sound;
    QByteArray bytes;
    for (qsizetype at = 0; at < sound.size();) {
        const qsizetype taken = std::min(m_untilBlock, sound.size() - at);
        bytes += sound.mid(at, taken);
        at += taken;
        m_untilBlock -= taken;
        if (m_untilBlock == 0) {
            bytes += block(seconds);
            m_untilBlock = m_interval;
        }
    }
    return bytes;
}

QByteArray MetadataWriter::block(double seconds)
{
    const int song = 1 + static_cast<int>(seconds / secondsPerSong);
    if (song == m_lastSong)
        return QByteArray(1, '\0');
    m_lastSong = song;
    QByteArray text = "StreamTitle='Artista - Brano " + QByteArray::number(song) + "';StreamUrl='';";
    const qsizetype units = (text.size() + 15) / 16;
    text.append(16 * units - text.size(), '\0');
    return QByteArray(1, static_cast<char>(units)) + text;
}

}
