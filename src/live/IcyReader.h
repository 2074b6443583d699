// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>
#include <vector>

namespace velarin::live {

// A title and the place where it begins: bytes of sound that the reader gave before it, since it was made.
struct TitleMark
{
    qint64 position{ 0 };
    QString title;
    bool operator==(const TitleMark&) const = default;
};

struct IcyOutput
{
    QByteArray sound;
    // In order; an empty title says that there is none. A title that is sent again is marked again.
    std::vector<TitleMark> titles;
    bool operator==(const IcyOutput&) const = default;
};

// Takes the metadata blocks out of the body of one connection: after each `interval` bytes of sound comes a length byte
// (sixteenths) and a block of that length. However the body is cut into pieces, the output is the same.
//
// A server that announces an interval and keeps none is found out at the first block that cannot be one: from there on
// everything is sound, the bytes of that block included.
class IcyReader
{
public:
    // No interval: everything is sound.
    explicit IcyReader(std::optional<qint64> interval);

    [[nodiscard]] IcyOutput read(QByteArrayView bytes);

private:
    void readSome(QByteArrayView& bytes, IcyOutput& output);
    void readSound(QByteArrayView& bytes, IcyOutput& output);
    void readLength(QByteArrayView& bytes, IcyOutput& output);
    void readBlock(QByteArrayView& bytes, IcyOutput& output);
    void finishBlock(IcyOutput& output);
    void endMetadata(IcyOutput& output);
    void giveSound(QByteArrayView bytes, IcyOutput& output);

    const std::optional<qint64> m_interval;
    // The server keeps to its interval: a block that can be nothing else was seen.
    bool m_proven{ false };
    bool m_metadataEnded{ false };
    qint64 m_soundUntilBlock{ 0 };
    qint64 m_soundGiven{ 0 };
    // Of the block that is being read: its length byte and what came of it.
    QByteArray m_block;
    qsizetype m_blockSize{ 0 };
};

}
