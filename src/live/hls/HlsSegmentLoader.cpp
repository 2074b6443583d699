// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsSegmentLoader.h"

#include "live/LiveLog.h"
#include "live/hls/HlsPlan.h"

#include <algorithm>
#include <utility>

namespace velarin::live {

namespace {

constexpr std::size_t mostKnown = 8;
constexpr qsizetype longestMap = 1024 * 1024;

AudioErrorChain cannotDecipher(const QString& text)
{
    return { { AudioErrorDomain::gstStream, GstError::streamWrongType, text } };
}

bool isRefusal(const AudioErrorChain& cause)
{
    const AudioError& first = cause.front();
    return first.domain == AudioErrorDomain::http && first.code >= 400 && first.code <= 499;
}

// Whether it begins as MP4 does (ISO/IEC 14496-12, section 4.3).
bool isPlainMap(QByteArrayView bytes)
{
    const QByteArrayView type = bytes.sliced(std::min<qsizetype>(4, bytes.size()));
    return type.startsWith("ftyp") || type.startsWith("styp") || type.startsWith("moov");
}

}

HlsSegmentLoader::HlsSegmentLoader(EngineLoop& loop, const HlsRequests& requests, HlsSegmentLoaderListener& listener)
    : m_loop(loop)
    , m_requests(requests)
    , m_listener(listener)
{
}

HlsSegmentLoader::~HlsSegmentLoader() = default;

void HlsSegmentLoader::load(const HlsSegment& segment, double targetDuration)
{
    cancel();
    m_segment = segment;
    m_targetDuration = targetDuration;
    m_received = 0;
    m_tries = 0;
    m_isBegun = false;
    m_decipher.reset();
    m_since = m_loop.now();
    m_reserveBefore = m_listener.reserve();
    fetchNext();
    watch();
}

void HlsSegmentLoader::cancel()
{
    ++m_order;
    m_part = Part::None;
    m_fetch.reset();
    m_deadline.cancel();
    m_retry.cancel();
}

void HlsSegmentLoader::setReading(bool reading)
{
    m_isReading = reading;
    if (!isBusy())
        return;
    if (m_fetch)
        m_fetch->setReading(reading);
    if (!reading) {
        m_deadline.cancel();
        return;
    }
    // The time in which nothing was read is nobody's fault.
    m_since = m_loop.now();
    m_lastByte = m_since;
    m_reserveBefore = m_listener.reserve();
    watch();
}

void HlsSegmentLoader::fetchNext()
{
    if (m_segment.key && !key())
        fetch(Part::Key);
    else if (m_segment.map && !map())
        fetch(Part::Map);
    else
        fetch(Part::Body);
}

void HlsSegmentLoader::fetch(Part part)
{
    m_part = part;
    m_collected.clear();
    ++m_tries;
    m_lastByte = m_loop.now();
    HlsFetchListener& listener = *this;
    m_fetch = std::make_unique<HlsFetch>(m_requests, order(), listener);
    if (!m_isReading)
        m_fetch->setReading(false);
}

HlsFetch::Order HlsSegmentLoader::order() const
{
    if (m_part == Part::Key)
        return { m_segment.key->url, {}, 0 };
    if (m_part == Part::Map)
        return { m_segment.map->url, m_segment.map->range, 0 };
    return { m_segment.url, m_segment.range, m_received };
}

const QByteArray* HlsSegmentLoader::known(Part part, const QUrl& url, const std::optional<HlsByteRange>& range) const
{
    for (const Known& known : m_known)
        if (known.part == part && known.url == url && known.range == range)
            return &known.bytes;
    return nullptr;
}

const QByteArray* HlsSegmentLoader::key() const
{
    return m_segment.key ? known(Part::Key, m_segment.key->url, {}) : nullptr;
}

const QByteArray* HlsSegmentLoader::map() const
{
    return m_segment.map ? known(Part::Map, m_segment.map->url, m_segment.map->range) : nullptr;
}

void HlsSegmentLoader::fetched(QByteArrayView bytes)
{
    m_lastByte = m_loop.now();
    if (m_part != Part::Body) {
        m_collected.append(bytes.first(std::min(bytes.size(), longestMap + 1 - m_collected.size())));
        if (m_collected.size() > longestMap)
            fail(cannotDecipher(QStringLiteral("a key or a map that does not end")));
        return;
    }
    m_received += bytes.size();
    if (!std::exchange(m_isBegun, true)) {
        if (const QByteArray* secret = key())
            m_decipher = std::make_unique<HlsDecipher>(
                *secret, m_segment.key->initializationVector.value_or(HlsDecipher::vectorOf(m_segment.sequence)));
        m_listener.segmentBegan(plainMap());
    }
    if (!m_decipher) {
        m_listener.segmentBytes(bytes);
        return;
    }
    if (const QByteArray plain = m_decipher->read(bytes); !plain.isEmpty())
        m_listener.segmentBytes(plain);
}

// A map may stand before the key in its list, or behind it, and is encrypted only then.
QByteArray HlsSegmentLoader::plainMap() const
{
    const QByteArray* stored = map();
    if (!stored || isPlainMap(*stored) || !key() || !m_segment.key->initializationVector)
        return stored ? *stored : QByteArray();
    HlsDecipher decipher(*key(), *m_segment.key->initializationVector);
    const QByteArray plain = decipher.read(*stored);
    return plain + decipher.finish().value_or(QByteArray());
}

void HlsSegmentLoader::fetchEnded(const AudioErrorChain& cause)
{
    if (!cause.empty())
        tryAgain(AudioErrorChain(cause));
    else if (m_part == Part::Body)
        bodyLoaded();
    else
        partLoaded();
}

void HlsSegmentLoader::partLoaded()
{
    if (m_part == Part::Key && m_collected.size() != HlsDecipher::blockSize) {
        fail(cannotDecipher(QStringLiteral("a key that is none")));
        return;
    }
    const QUrl url = m_part == Part::Key ? m_segment.key->url : m_segment.map->url;
    const auto range = m_part == Part::Key ? std::nullopt : m_segment.map->range;
    m_known.push_back({ m_part, url, range, m_collected });
    if (m_known.size() > mostKnown)
        m_known.pop_front();
    m_tries = 0;
    fetchNext();
}

void HlsSegmentLoader::bodyLoaded()
{
    if (m_received == 0) {
        tryAgain({ { AudioErrorDomain::closed, 0, QStringLiteral("an empty segment") } });
        return;
    }
    const std::optional<QByteArray> last = m_decipher ? m_decipher->finish() : QByteArray();
    if (!last) {
        fail(cannotDecipher(QStringLiteral("a segment that its key does not open")));
        return;
    }
    const int order = m_order;
    if (!last->isEmpty())
        m_listener.segmentBytes(*last);
    if (order != m_order)
        return;
    cancel();
    m_listener.segmentLoaded();
}

void HlsSegmentLoader::tryAgain(const AudioErrorChain& cause)
{
    m_fetch.reset();
    const auto wait = hlsSegmentRetry(isRefusal(cause), m_tries, m_listener.reserve().count());
    if (!wait) {
        fail(cause);
        return;
    }
    m_retry = m_loop.after(*wait, [this] { fetch(m_part); });
}

void HlsSegmentLoader::fail(const AudioErrorChain& told)
{
    const AudioErrorChain cause = told;
    qCDebug(liveLog) << "segment" << m_segment.url.toDisplayString() << "given up:" << cause.front().text;
    cancel();
    m_listener.segmentFailed(cause);
}

void HlsSegmentLoader::watch()
{
    if (m_isReading)
        m_deadline =
            m_loop.after(hlsSegmentDeadline(m_targetDuration, m_listener.reserve().count()), [this] { timeIsOver(); });
}

void HlsSegmentLoader::timeIsOver()
{
    const auto now = m_loop.now();
    HlsSlowness slowness;
    slowness.elapsed = Seconds(now - m_since).count();
    slowness.silentFor = Seconds(now - m_lastByte).count();
    slowness.received = m_received;
    slowness.length = m_fetch ? m_fetch->length() : std::nullopt;
    slowness.reserveBefore = m_reserveBefore.count();
    slowness.reserveNow = m_listener.reserve().count();
    if (isHlsSegmentWorthWaiting(slowness))
        watch();
    else
        fail({ { AudioErrorDomain::timeout, 0, QStringLiteral("a segment does not come in time") } });
}

}
