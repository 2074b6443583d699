// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/IcyReader.h"

#include "live/IcyTitle.h"

#include <algorithm>

namespace velarin::live {
namespace {

// No key of a metadata block is longer; random bytes betray themselves long before.
constexpr qsizetype longestKey = 64;

bool isPrintable(char character)
{
    return character >= ' ' && character <= '~';
}

// Whether the beginning of a block could be metadata: a printable key with its equals sign, or as much of one as there
// is, or nothing but the NULs of an empty block.
bool mayBeMetadata(QByteArrayView beginning)
{
    if (std::all_of(beginning.begin(), beginning.end(), [](char character) { return character == '\0'; }))
        return true;
    const auto end = std::find_if(
        beginning.begin(), beginning.end(), [](char character) { return character == '=' || !isPrintable(character); });
    if (end - beginning.begin() > longestKey)
        return false;
    return end == beginning.end() || (*end == '=' && end != beginning.begin());
}

QByteArrayView takeFirst(QByteArrayView& bytes, qsizetype count)
{
    const QByteArrayView taken = bytes.first(std::min(count, bytes.size()));
    bytes = bytes.sliced(taken.size());
    return taken;
}

}

IcyReader::IcyReader(std::optional<qint64> interval)
    : m_interval(interval)
    , m_soundUntilBlock(interval.value_or(0))
{
}

IcyOutput IcyReader::read(QByteArrayView bytes)
{
    IcyOutput output;
    if (!m_interval || m_metadataEnded)
        giveSound(bytes, output);
    else
        while (!bytes.isEmpty())
            readSome(bytes, output);
    return output;
}

void IcyReader::readSome(QByteArrayView& bytes, IcyOutput& output)
{
    if (m_metadataEnded)
        giveSound(takeFirst(bytes, bytes.size()), output);
    else if (m_soundUntilBlock > 0)
        readSound(bytes, output);
    else if (m_block.isEmpty())
        readLength(bytes, output);
    else
        readBlock(bytes, output);
}

void IcyReader::readSound(QByteArrayView& bytes, IcyOutput& output)
{
    const QByteArrayView sound = takeFirst(bytes, static_cast<qsizetype>(m_soundUntilBlock));
    m_soundUntilBlock -= sound.size();
    giveSound(sound, output);
}

void IcyReader::readLength(QByteArrayView& bytes, IcyOutput& output)
{
    m_block = takeFirst(bytes, 1).toByteArray();
    m_blockSize = 16 * static_cast<unsigned char>(m_block.front());
    if (m_blockSize == 0)
        finishBlock(output);
}

void IcyReader::readBlock(QByteArrayView& bytes, IcyOutput& output)
{
    m_block += takeFirst(bytes, m_blockSize + 1 - m_block.size());
    // Judged as it grows: of a server without metadata no more than a few bytes are ever held back.
    if (!m_proven && !mayBeMetadata(QByteArrayView(m_block).sliced(1)))
        endMetadata(output);
    else if (m_block.size() == m_blockSize + 1)
        finishBlock(output);
}

void IcyReader::finishBlock(IcyOutput& output)
{
    const QByteArrayView content = QByteArrayView(m_block).sliced(1);
    m_proven = m_proven || content.contains('=');
    if (const std::optional<QString> title = icyTitle(content))
        output.titles.push_back({ m_soundGiven, *title });
    m_block.clear();
    m_soundUntilBlock = *m_interval;
}

void IcyReader::endMetadata(IcyOutput& output)
{
    m_metadataEnded = true;
    giveSound(m_block, output);
    m_block.clear();
}

void IcyReader::giveSound(QByteArrayView bytes, IcyOutput& output)
{
    output.sound += bytes;
    m_soundGiven += bytes.size();
}

}
