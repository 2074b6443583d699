// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsSource.h"

#include "live/LiveLog.h"

#include <utility>

namespace velarin::live {

namespace {

// A variant whose segments fail one after the other is no longer served.
constexpr int lossesOfAVariant = 3;
// Before the first sound nobody waits for longer.
constexpr int lossesBeforeTheFirst = 4;
// A list that brought nothing so many times in a row stands still.
constexpr int standstillsOfAList = 3;
// Sound that could not be played again and again, within so much sound, never will be.
constexpr int mostRefusals = 2;
constexpr Seconds refusalMemory{ 30.0 };

AudioErrorChain noSound(const QString& text)
{
    return { { AudioErrorDomain::gstStream, GstError::streamWrongType, text } };
}

}

HlsSource::HlsSource(EngineLoop& loop, ConnectionFactory& connections, const StreamRequest& request, const QUrl& found,
    qint64 peakBitRate, LiveSourceListener& listener)
    : m_loop(loop)
    , m_listener(listener)
    , m_requests(connections, request)
    , m_loader(loop, m_requests, *this)
    , m_lists(loop, m_requests, { request.url, found, peakBitRate }, *this)
{
}

HlsSource::~HlsSource() = default;

void HlsSource::setReading(bool reading)
{
    if (reading == std::exchange(m_isReading, reading))
        return;
    m_loader.setReading(reading);
    m_lists.setReading(reading);
    if (reading)
        m_resumption = m_loop.after(std::chrono::nanoseconds(0), [this] { takeNext(); });
}

void HlsSource::refuseSound(const AudioErrorChain& cause)
{
    const Seconds received = m_listener.soundReceivedSoFar();
    if (received - m_refusedAt > refusalMemory)
        m_refusals = 0;
    m_refusedAt = received;
    ++m_refusals;
    m_breaks = true;
    m_loader.cancel();
    if (m_refusals < mostRefusals) {
        m_resumption = m_loop.after(std::chrono::nanoseconds(0), [this] { takeNext(); });
        return;
    }
    m_refusals = 0;
    if (m_lists.leaveVariant()) {
        m_list.reset();
        return;
    }
    m_isOver = true;
    breakOff(cause, Mending::No);
}

void HlsSource::listReceived(const HlsMediaPlaylist& list, HlsListOrigin origin, int standstills)
{
    m_list = list;
    if (origin == HlsListOrigin::Other && m_position)
        m_position = carriedOver(*m_position, list);
    takeNext();
    if (standstills >= standstillsOfAList && !m_loader.isBusy())
        breakOff({}, Mending::Yes);
}

void HlsSource::listFailed(const AudioErrorChain& cause)
{
    if (m_stretch)
        breakOff(cause, Mending::Yes);
    else if (!m_loader.isBusy())
        fail(cause);
}

void HlsSource::listsFailed(const AudioErrorChain& cause)
{
    fail(cause);
}

Seconds HlsSource::reserve() const
{
    return m_listener.soundInHand();
}

void HlsSource::takeNext()
{
    while (!m_isOver && m_isReading && m_list && !m_loader.isBusy()) {
        const std::optional<HlsNext> following = next();
        if (!following) {
            listIsUsedUp();
            return;
        }
        const HlsSegment segment = m_list->segments[following->index];
        take(segment, following->joint);
    }
}

std::optional<HlsNext> HlsSource::next() const
{
    if (m_position)
        return nextHlsSegment(*m_list, *m_position);
    const std::optional<qsizetype> first = firstHlsSegment(*m_list);
    return first ? std::optional(HlsNext{ *first, HlsJoint::Broken }) : std::nullopt;
}

void HlsSource::take(const HlsSegment& segment, HlsJoint joint)
{
    const bool joins = joint == HlsJoint::Continuous && !segment.discontinuity && segment.map == m_segment.map;
    m_breaks = m_breaks || !joins;
    m_segment = segment;
    m_position = positionOf(segment);
    if (segment.gap)
        lose(noSound(QStringLiteral("the list says that it is missing")));
    else if (segment.undecipherable)
        lose(noSound(QStringLiteral("a segment that cannot be deciphered")));
    else
        m_loader.load(segment, m_list->targetDuration);
}

void HlsSource::listIsUsedUp()
{
    if (!m_list->ended)
        return;
    m_isOver = true;
    if (m_stretch)
        breakOff({ { AudioErrorDomain::closed, 0, QStringLiteral("the end of the list") } }, Mending::No);
    else
        fail(m_firstLoss.empty() ? noSound(QStringLiteral("a list without sound")) : AudioErrorChain(m_firstLoss));
}

void HlsSource::segmentBegan(const QByteArray& map)
{
    if (m_breaks)
        m_reader.breakOff();
    m_reader.begin(Seconds(m_segment.duration), map);
}

void HlsSource::segmentBytes(QByteArrayView bytes)
{
    give(m_reader.read(bytes));
    if (!m_reader.isRefused())
        return;
    m_loader.cancel();
    segmentFailed(noSound(QStringLiteral("a segment that is no sound")));
}

void HlsSource::segmentLoaded()
{
    give(m_reader.finish());
    if (m_reader.isRefused()) {
        segmentFailed(noSound(QStringLiteral("a segment that is no sound")));
        return;
    }
    m_lostInARow = 0;
    m_lastWhole = m_position;
    takeNext();
}

void HlsSource::segmentFailed(const AudioErrorChain& cause)
{
    lose(cause);
    takeNext();
}

void HlsSource::lose(const AudioErrorChain& cause)
{
    m_breaks = true;
    ++m_lostInARow;
    if (m_firstLoss.empty())
        m_firstLoss = cause;
    if (m_lostInARow >= lossesOfAVariant && m_lists.leaveVariant()) {
        // Another variant may still have what this one lost.
        m_lostInARow = 0;
        m_position = m_lastWhole;
        m_list.reset();
    } else if (!m_stretch && m_lostInARow >= lossesBeforeTheFirst) {
        fail(AudioErrorChain(m_firstLoss));
    } else if (m_stretch && m_lostInARow > 1) {
        breakOff(cause, Mending::Yes);
    }
}

void HlsSource::give(const std::vector<HlsItem>& items)
{
    for (const HlsItem& item : items) {
        if (const auto* sound = std::get_if<HlsSound>(&item))
            give(*sound);
        else
            m_listener.titleReceived(std::get<HlsTitle>(item).title);
    }
}

void HlsSource::give(const HlsSound& sound)
{
    if (sound.bytes.isEmpty())
        return;
    if (std::exchange(m_breaks, false) || m_stretch != sound.format) {
        m_stretch = sound.format;
        m_listener.stretchStarted(sound.format, std::nullopt);
    }
    if (std::exchange(m_outage, std::nullopt))
        m_listener.outageEnded();
    if (sound.lasting)
        m_listener.measuredSoundReceived(sound.bytes, *sound.lasting);
    else
        m_listener.soundReceived(sound.bytes);
}

void HlsSource::breakOff(const AudioErrorChain& cause, Mending mending)
{
    // The first cause counts; standing still is only a guess at one.
    if (!m_stretch || (m_outage && !m_outage->cause.empty() && m_outage->mending == mending))
        return;
    if (m_outage && cause.empty())
        return;
    qCDebug(liveLog) << "segments broke off:" << (cause.empty() ? QStringLiteral("silence") : cause.front().text);
    m_outage = Outage{ m_outage && !m_outage->cause.empty() ? m_outage->cause : cause, mending };
    m_listener.outageBegan(m_outage->cause, mending);
}

void HlsSource::fail(const AudioErrorChain& cause)
{
    m_isOver = true;
    m_list.reset();
    m_loader.cancel();
    m_listener.sourceFailed(cause);
}

}
