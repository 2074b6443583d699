// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/server/StationProgramme.h"

#include <QtEndian>

namespace velarin::test {
namespace {

constexpr char firstPageFlag = 2;

qsizetype pageSize(const QByteArray& bytes, qsizetype at)
{
    const qsizetype segments = static_cast<unsigned char>(bytes[at + 26]);
    qsizetype size = 27 + segments;
    for (qsizetype index = at + 27; index < at + 27 + segments; ++index)
        size += static_cast<unsigned char>(bytes[index]);
    return size;
}

}

StationProgramme::StationProgramme(QByteArray bytes, double bytesPerSecond, double lead)
    : m_bytes(std::move(bytes))
    , m_bytesPerSecond(bytesPerSecond)
    , m_lead(lead)
{
}

qint64 StationProgramme::liveEdge(double seconds) const
{
    return static_cast<qint64>((m_lead + seconds) * m_bytesPerSecond);
}

QByteArray StationProgramme::bytesAt(qint64 position, qint64 count) const
{
    QByteArray bytes;
    while (bytes.size() < count) {
        const qint64 at = (position + bytes.size()) % m_bytes.size();
        bytes += m_bytes.mid(at, count - bytes.size());
    }
    return bytes;
}

qint64 StationProgramme::startNear(qint64 position) const
{
    if (!isOgg())
        return position;
    const qint64 at = position % m_bytes.size();
    const qsizetype page = m_bytes.indexOf("OggS", at);
    return position - at + (page < 0 ? m_bytes.size() : page);
}

QByteArray StationProgramme::headerBefore(qint64 position) const
{
    if (!isOgg())
        return {};
    const qint64 end = position % m_bytes.size();
    QByteArray header;
    for (qsizetype at = 0; at < end; at += pageSize(m_bytes, at)) {
        if (m_bytes[at + 5] & firstPageFlag)
            header.clear();
        if (qFromLittleEndian<qint64>(m_bytes.constData() + at + 6) == 0)
            header += m_bytes.mid(at, pageSize(m_bytes, at));
    }
    return header;
}

}
