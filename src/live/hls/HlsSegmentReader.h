// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/BodySniffer.h"
#include "live/Seconds.h"
#include "live/hls/TransportStream.h"

#include <QByteArray>
#include <QByteArrayView>

#include <optional>
#include <variant>
#include <vector>

namespace velarin::live {

// What segments turned out to hold, in its order.
struct HlsSound
{
    SoundFormat format{ SoundFormat::Other };
    QByteArray bytes;
    // How long it sounds, where only the list knows.
    std::optional<Seconds> lasting;
    bool operator==(const HlsSound&) const = default;
};
struct HlsTitle
{
    QString title;
    bool operator==(const HlsTitle&) const = default;
};
using HlsItem = std::variant<HlsSound, HlsTitle>;

// Unwraps segments, one after the other: takes the ID3 tags from the head of packed audio, and sound and titles out of
// a transport stream; leaves fragmented MP4 as it is, behind the map that it needs. The first bytes decide which it is.
class HlsSegmentReader
{
public:
    // A segment of MP4 is held until it is whole, and no longer one than this.
    static constexpr qsizetype longestWhole = 16 * 1024 * 1024;

    // The next segment. `map`: what must stand before its stretch, empty where nothing must.
    void begin(Seconds duration, const QByteArray& map);
    [[nodiscard]] std::vector<HlsItem> read(QByteArrayView bytes);
    // All of the segment was read.
    [[nodiscard]] std::vector<HlsItem> finish();
    // What comes next does not join what came.
    void breakOff();

    // What the present segment gave is no sound; what comes of it after that is passed over.
    [[nodiscard]] bool isRefused() const { return m_kind == Kind::Refused; }

private:
    enum class Kind
    {
        // Too little is there to tell.
        Unknown,
        // Bare frames.
        Frames,
        Transport,
        // A container that is decoded as it stands.
        Whole,
        Refused,
    };

    [[nodiscard]] bool takeTags();
    void judge(BodyEnd end);
    void settle(Kind kind, QByteArrayView first);
    void unwrap(QByteArrayView bytes);
    void give(std::vector<TsItem> items);
    void giveWhole();

    Kind m_kind{ Kind::Unknown };
    SoundFormat m_format{ SoundFormat::Other };
    Seconds m_duration{ 0.0 };
    QByteArray m_map;
    // The map stands before this stretch already.
    bool m_mapGiven{ false };
    // What is not judged yet, or not whole.
    QByteArray m_held;
    // Fewer bytes are not looked at again: what comes byte by byte would cost its square.
    qsizetype m_worthJudging{ 0 };
    // Of a tag that is larger than what was held of it.
    qsizetype m_tagLeft{ 0 };
    TransportStream m_transport;
    std::vector<HlsItem> m_items;
};

}
