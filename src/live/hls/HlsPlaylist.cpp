// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsPlaylist.h"

#include "base/Urls.h"
#include "live/hls/HlsAttributes.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace velarin::live {

namespace {

// Segments longer than this are a mistake in the list; the sum of all must stay a sensible number.
constexpr double longestSegment = 24 * 3600.0;

std::optional<QByteArrayView> afterTag(QByteArrayView line, QByteArrayView tag)
{
    if (!line.startsWith(tag))
        return std::nullopt;
    return line.sliced(tag.size());
}

// One rendition of EXT-X-MEDIA with an address of its own.
struct Rendition
{
    QByteArray group;
    QUrl url;
    bool isDefault{ false };
};

// A variant whose rendition is still to be looked up, since renditions may stand anywhere in the list.
struct PendingVariant
{
    HlsVariant variant;
    QByteArray audioGroup;
};

class PlaylistReading
{
public:
    explicit PlaylistReading(const QUrl& base)
        : m_base(base)
    {
    }

    void readLine(QByteArrayView line);
    [[nodiscard]] HlsPlaylist finish();

private:
    void readTag(QByteArrayView line);
    bool readListTag(QByteArrayView line);
    bool readSegmentTag(QByteArrayView line);
    void readAddress(QByteArrayView line);
    void readRendition(QByteArrayView attributes);
    void readKey(QByteArrayView attributes);
    void readMap(QByteArrayView attributes);
    void addVariant(const QUrl& url);
    void addSegment(const QUrl& url);
    [[nodiscard]] std::optional<HlsByteRange> rangeFor(const QUrl& url);
    [[nodiscard]] std::optional<QUrl> resolved(QByteArrayView address) const;
    [[nodiscard]] HlsMasterPlaylist master() const;

    const QUrl& m_base;
    HlsMediaPlaylist m_media;
    QList<PendingVariant> m_variants;
    QList<Rendition> m_renditions;
    bool m_isMedia{ false };

    // What stands before an address and belongs to it.
    std::optional<QByteArray> m_variantAttributes;
    double m_duration{ 0.0 };
    std::optional<QByteArray> m_byteRange;
    bool m_discontinuity{ false };
    bool m_gap{ false };

    // What holds from a tag on.
    std::optional<HlsKey> m_key;
    bool m_undecipherable{ false };
    std::optional<HlsMap> m_map;
    qint64 m_sequence{ 0 };
    QUrl m_rangeUrl;
    qint64 m_rangeEnd{ 0 };
};

std::optional<QUrl> PlaylistReading::resolved(QByteArrayView address) const
{
    const auto url = QUrl(QString::fromUtf8(address.trimmed()), QUrl::TolerantMode);
    const QUrl absolute = m_base.resolved(url);
    return isWebAddress(absolute) ? std::optional(absolute) : std::nullopt;
}

void PlaylistReading::readLine(QByteArrayView line)
{
    if (line.isEmpty())
        return;
    if (line.startsWith('#'))
        readTag(line);
    else
        readAddress(line);
}

void PlaylistReading::readTag(QByteArrayView line)
{
    if (!readSegmentTag(line))
        readListTag(line);
}

bool PlaylistReading::readSegmentTag(QByteArrayView line)
{
    if (const auto info = afterTag(line, "#EXTINF:")) {
        const qsizetype comma = info->indexOf(',');
        m_duration = std::min(hlsNumber(comma < 0 ? *info : info->first(comma)).value_or(0.0), longestSegment);
        m_isMedia = true;
    } else if (const auto range = afterTag(line, "#EXT-X-BYTERANGE:")) {
        m_byteRange = range->toByteArray();
    } else if (line == "#EXT-X-DISCONTINUITY") {
        m_discontinuity = true;
    } else if (line == "#EXT-X-GAP") {
        m_gap = true;
    } else if (const auto key = afterTag(line, "#EXT-X-KEY:")) {
        readKey(*key);
    } else if (const auto map = afterTag(line, "#EXT-X-MAP:")) {
        readMap(*map);
    } else {
        return false;
    }
    return true;
}

bool PlaylistReading::readListTag(QByteArrayView line)
{
    if (const auto variant = afterTag(line, "#EXT-X-STREAM-INF:")) {
        m_variantAttributes = variant->toByteArray();
    } else if (const auto rendition = afterTag(line, "#EXT-X-MEDIA:")) {
        readRendition(*rendition);
    } else if (const auto target = afterTag(line, "#EXT-X-TARGETDURATION:")) {
        m_media.targetDuration = std::clamp(hlsNumber(*target).value_or(1.0), 1.0, longestSegment);
        m_isMedia = true;
    } else if (const auto sequence = afterTag(line, "#EXT-X-MEDIA-SEQUENCE:")) {
        // It tells the first segment's number, so it may not come behind one.
        if (m_media.segments.isEmpty())
            m_sequence = hlsInteger(*sequence).value_or(0);
        m_isMedia = true;
    } else if (line == "#EXT-X-ENDLIST") {
        m_media.ended = true;
        m_isMedia = true;
    } else if (const auto start = afterTag(line, "#EXT-X-START:")) {
        const QByteArray offset = hlsAttribute(*start, "TIME-OFFSET").value_or(QByteArray());
        const bool fromEnd = offset.startsWith('-');
        if (const auto seconds = hlsNumber(QByteArrayView(offset).sliced(fromEnd ? 1 : 0)))
            m_media.startOffset = fromEnd ? -*seconds : *seconds;
    } else {
        return false;
    }
    return true;
}

void PlaylistReading::readRendition(QByteArrayView attributes)
{
    const auto address = hlsAttribute(attributes, "URI");
    if (hlsAttribute(attributes, "TYPE") != "AUDIO" || !address || m_renditions.size() >= hlsVariantLimit)
        return;
    if (const auto url = resolved(*address)) {
        m_renditions.append({ hlsAttribute(attributes, "GROUP-ID").value_or(QByteArray()), *url,
            hlsAttribute(attributes, "DEFAULT") == "YES" });
    }
}

void PlaylistReading::readKey(QByteArrayView attributes)
{
    const QByteArray method = hlsAttribute(attributes, "METHOD").value_or("NONE");
    const QByteArray format = hlsAttribute(attributes, "KEYFORMAT").value_or("identity");
    const auto url = resolved(hlsAttribute(attributes, "URI").value_or(QByteArray()));
    // Several keys may stand for one segment, each in another format: the one that can be read counts.
    if (method == "NONE") {
        m_key.reset();
        m_undecipherable = false;
    } else if (method == "AES-128" && format == "identity" && url) {
        const auto vector = hlsAttribute(attributes, "IV");
        m_key = HlsKey{ *url, vector ? hlsHexadecimal128(*vector) : std::nullopt };
        m_undecipherable = false;
    } else {
        m_key.reset();
        m_undecipherable = true;
    }
}

void PlaylistReading::readMap(QByteArrayView attributes)
{
    const auto url = resolved(hlsAttribute(attributes, "URI").value_or(QByteArray()));
    m_map.reset();
    if (!url)
        return;
    m_map = HlsMap{ *url, std::nullopt };
    if (const auto range = hlsAttribute(attributes, "BYTERANGE")) {
        const qsizetype at = range->indexOf('@');
        const auto length = hlsInteger(QByteArrayView(*range).first(at < 0 ? range->size() : at));
        const auto offset = at < 0 ? std::optional<qint64>(0) : hlsInteger(QByteArrayView(*range).sliced(at + 1));
        if (length && offset)
            m_map->range = HlsByteRange{ *length, *offset };
    }
}

void PlaylistReading::readAddress(QByteArrayView line)
{
    const auto url = resolved(line);
    if (m_variantAttributes) {
        if (url)
            addVariant(*url);
        m_variantAttributes.reset();
        return;
    }
    if (url)
        addSegment(*url);
    // A segment that is left out keeps its number, so that those behind it keep theirs.
    ++m_sequence;
    m_duration = 0.0;
    m_byteRange.reset();
    m_gap = false;
}

void PlaylistReading::addVariant(const QUrl& url)
{
    if (m_variants.size() >= hlsVariantLimit)
        return;
    const QByteArrayView attributes = *m_variantAttributes;
    PendingVariant pending;
    pending.variant.url = url;
    pending.variant.bandwidth = hlsInteger(hlsAttribute(attributes, "BANDWIDTH").value_or(QByteArray())).value_or(0);
    const QByteArray codecs = hlsAttribute(attributes, "CODECS").value_or(QByteArray());
    constexpr std::array videoCodecs{ "avc1", "avc3", "hvc1", "hev1", "vp09", "av01", "dvh1", "mp4v" };
    pending.variant.hasVideo = hlsAttribute(attributes, "RESOLUTION").has_value() ||
                               std::any_of(videoCodecs.begin(), videoCodecs.end(),
                                   [&codecs](const char* codec) { return codecs.contains(codec); });
    pending.audioGroup = hlsAttribute(attributes, "AUDIO").value_or(QByteArray());
    m_variants.append(pending);
}

std::optional<HlsByteRange> PlaylistReading::rangeFor(const QUrl& url)
{
    if (!m_byteRange)
        return std::nullopt;
    const qsizetype at = m_byteRange->indexOf('@');
    const QByteArrayView text = *m_byteRange;
    const auto length = hlsInteger(text.first(at < 0 ? text.size() : at));
    // Without an offset the range begins where the one before it in the same resource ended.
    const qint64 following = url == m_rangeUrl ? m_rangeEnd : 0;
    const auto offset = at < 0 ? std::optional(following) : hlsInteger(text.sliced(at + 1));
    if (!length || !offset || *length == 0)
        return std::nullopt;
    m_rangeUrl = url;
    m_rangeEnd = *offset + *length;
    return HlsByteRange{ *length, *offset };
}

void PlaylistReading::addSegment(const QUrl& url)
{
    HlsSegment segment;
    segment.url = url;
    segment.duration = m_duration;
    segment.range = rangeFor(url);
    segment.sequence = m_sequence;
    segment.discontinuity = std::exchange(m_discontinuity, false);
    segment.gap = m_gap;
    segment.key = m_key;
    segment.undecipherable = m_undecipherable;
    segment.map = m_map;
    if (m_media.segments.size() >= hlsSegmentLimit)
        m_media.segments.removeFirst();
    m_media.segments.append(segment);
}

HlsMasterPlaylist PlaylistReading::master() const
{
    HlsMasterPlaylist result;
    for (const PendingVariant& pending : m_variants) {
        HlsVariant variant = pending.variant;
        for (const Rendition& rendition : m_renditions) {
            if (pending.audioGroup.isEmpty() || rendition.group != pending.audioGroup)
                continue;
            if (!variant.audioUrl || rendition.isDefault)
                variant.audioUrl = rendition.url;
            if (rendition.isDefault)
                break;
        }
        result.variants.append(variant);
    }
    return result;
}

HlsPlaylist PlaylistReading::finish()
{
    if (!m_variants.isEmpty())
        return master();
    if (!m_isMedia || (m_media.segments.isEmpty() && !m_media.ended))
        return HlsPlaylistError::Empty;
    return m_media;
}

QByteArrayView withoutByteOrderMark(QByteArrayView bytes)
{
    constexpr QByteArrayView mark("\xEF\xBB\xBF");
    return bytes.startsWith(mark) ? bytes.sliced(mark.size()) : bytes;
}

}

double HlsMediaPlaylist::duration() const
{
    return std::accumulate(segments.begin(), segments.end(), 0.0,
        [](double sum, const HlsSegment& segment) { return sum + segment.duration; });
}

HlsPlaylist readHlsPlaylist(QByteArrayView bytes, const QUrl& base)
{
    if (bytes.size() > hlsByteLimit)
        return HlsPlaylistError::TooLong;
    const QByteArrayView text = withoutByteOrderMark(bytes).trimmed();
    PlaylistReading reading(base);
    bool isHls = false;
    for (qsizetype at = 0; at < text.size();) {
        qsizetype end = text.indexOf('\n', at);
        if (end < 0)
            end = text.size();
        const QByteArrayView line = text.sliced(at, end - at).trimmed();
        at = end + 1;
        // Some lists have a comment above their first line.
        isHls = isHls || line.startsWith("#EXTM3U");
        if (isHls)
            reading.readLine(line);
        else if (!line.isEmpty() && !line.startsWith('#'))
            break;
    }
    return isHls ? reading.finish() : HlsPlaylist(HlsPlaylistError::NotHls);
}

}
