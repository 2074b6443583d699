// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsSegmentReader.h"

#include "live/hls/Id3Tag.h"

#include <algorithm>
#include <utility>

namespace velarin::live {

namespace {

// A tag larger than this holds a picture: it is passed over unread.
constexpr qsizetype longestTag = 64 * 1024;

}

void HlsSegmentReader::begin(Seconds duration, const QByteArray& map)
{
    m_kind = Kind::Unknown;
    m_duration = duration;
    m_map = map;
    m_held.clear();
    m_tagLeft = 0;
    m_worthJudging = 0;
}

void HlsSegmentReader::breakOff()
{
    m_transport = {};
    m_mapGiven = false;
}

std::vector<HlsItem> HlsSegmentReader::read(QByteArrayView bytes)
{
    if (m_kind == Kind::Unknown) {
        m_held.append(bytes);
        if (takeTags() && m_held.size() >= m_worthJudging)
            judge(BodyEnd::NotYet);
    } else {
        unwrap(bytes);
    }
    return std::exchange(m_items, {});
}

std::vector<HlsItem> HlsSegmentReader::finish()
{
    if (m_kind == Kind::Unknown && takeTags())
        judge(BodyEnd::Reached);
    if (m_kind == Kind::Transport)
        give(m_transport.finish());
    else if (m_kind == Kind::Whole)
        giveWhole();
    return std::exchange(m_items, {});
}

// Whether what is held begins behind all tags.
bool HlsSegmentReader::takeTags()
{
    while (true) {
        const qsizetype passed = std::min(m_tagLeft, m_held.size());
        m_held.remove(0, passed);
        m_tagLeft -= passed;
        if (m_tagLeft > 0 || m_held.isEmpty())
            return false;
        if (m_held.size() < id3HeaderSize &&
            QByteArrayView("ID3").startsWith(QByteArrayView(m_held).first(std::min<qsizetype>(3, m_held.size()))))
            return false;
        const std::optional<qsizetype> size = id3TagSize(m_held);
        if (!size)
            return true;
        if (*size <= longestTag && m_held.size() < *size)
            return false;
        if (const std::optional<QString> title = id3Title(m_held))
            m_items.emplace_back(HlsTitle{ *title });
        m_tagLeft = *size;
    }
}

void HlsSegmentReader::judge(BodyEnd end)
{
    const bool isInit = m_held.size() >= 8 && !m_map.isEmpty();
    if (isInit) {
        m_format = SoundFormat::Mp4;
        settle(Kind::Whole, m_held);
        return;
    }
    const SniffedBody body = sniffBody(m_held, {}, end);
    m_format = body.format;
    const QByteArray held = m_held;
    if (body.kind == BodyKind::NeedsMore) {
        m_worthJudging = held.size() + held.size() / 4 + 64;
        return;
    }
    if (body.kind != BodyKind::Sound)
        settle(Kind::Refused, {});
    else if (body.format == SoundFormat::MpegTs)
        settle(Kind::Transport, held);
    else if (body.format == SoundFormat::Mp4 || body.format == SoundFormat::Other)
        settle(Kind::Whole, held);
    else
        settle(Kind::Frames, QByteArrayView(held).sliced(body.start));
}

void HlsSegmentReader::settle(Kind kind, QByteArrayView first)
{
    const QByteArray kept = first.toByteArray();
    m_kind = kind;
    m_held.clear();
    unwrap(kept);
}

void HlsSegmentReader::unwrap(QByteArrayView bytes)
{
    switch (m_kind) {
    case Kind::Frames:
        m_items.emplace_back(HlsSound{ m_format, bytes.toByteArray(), std::nullopt });
        return;
    case Kind::Transport:
        give(m_transport.read(bytes));
        if (m_transport.isStrange())
            m_kind = Kind::Refused;
        return;
    case Kind::Whole:
        m_held.append(bytes);
        if (m_held.size() > longestWhole)
            settle(Kind::Refused, {});
        return;
    case Kind::Unknown:
    case Kind::Refused:
        return;
    }
}

void HlsSegmentReader::give(std::vector<TsItem> items)
{
    for (TsItem& item : items) {
        if (auto* sound = std::get_if<TsSound>(&item))
            m_items.emplace_back(HlsSound{ sound->format, std::move(sound->bytes), std::nullopt });
        else
            m_items.emplace_back(HlsTitle{ std::get<TsTitle>(item).title });
    }
}

void HlsSegmentReader::giveWhole()
{
    if (!std::exchange(m_mapGiven, true) && !m_map.isEmpty())
        m_items.emplace_back(HlsSound{ m_format, m_map, Seconds(0.0) });
    m_items.emplace_back(HlsSound{ m_format, std::exchange(m_held, {}), m_duration });
}

}
