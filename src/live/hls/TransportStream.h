// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/SoundFormat.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>
#include <variant>
#include <vector>

namespace velarin::live {

// What a transport stream turned out to hold, in its order.
struct TsSound
{
    // Mpeg, AacAdts or AacLoas.
    SoundFormat format{ SoundFormat::AacAdts };
    QByteArray bytes;
    bool operator==(const TsSound&) const = default;
};
struct TsTitle
{
    QString title;
    bool operator==(const TsTitle&) const = default;
};
using TsItem = std::variant<TsSound, TsTitle>;

// Takes the sound and the titles out of an MPEG transport stream (ISO/IEC 13818-1): the first stream of sound of the
// first programme, and the timed ID3 tags beside it. The sound leaves it as the bare frames that a radio without a
// container would send, so that it is counted and decoded as those are. Cut anywhere; bounded in what it keeps.
class TransportStream
{
public:
    [[nodiscard]] std::vector<TsItem> read(QByteArrayView bytes);
    // A segment is over: what still waits for its end has it.
    [[nodiscard]] std::vector<TsItem> finish();

    // The tables have named the streams, and no sound that is known here is among them.
    [[nodiscard]] bool isStrange() const { return m_isStrange; }

private:
    // One elementary stream on its way out of packets.
    struct Stream
    {
        int pid{ 0 };
        QByteArray packet;
        // The packet's header was seen and taken off.
        bool isOpen{ false };
    };
    struct Table
    {
        int pid{ 0 };
        QByteArray section;
    };

    void readPacket(QByteArrayView packet);
    void readTable(Table& table, QByteArrayView payload, bool starts);
    void readPrograms(QByteArrayView section);
    void readStreams(QByteArrayView section);
    void readSound(QByteArrayView payload, bool starts);
    void readMetadata(QByteArrayView payload, bool starts);
    void give(QByteArrayView sound);
    void giveTitle();

    QByteArray m_rest;
    Table m_programs;
    std::optional<Table> m_streams;
    std::optional<Stream> m_sound;
    std::optional<Stream> m_metadata;
    SoundFormat m_format{ SoundFormat::AacAdts };
    bool m_isStrange{ false };
    std::vector<TsItem> m_items;
};

}
