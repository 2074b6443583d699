// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/StreamAttempt.h"

#include "live/LiveLog.h"
#include "live/PlaylistReader.h"

#include <algorithm>
#include <utility>

namespace velarin::live {

namespace {

AudioErrorChain streamError(qint64 code, const QString& text)
{
    return { AudioError{ AudioErrorDomain::gstStream, code, text } };
}

}

StreamAttempt::StreamAttempt(ConnectionFactory& connections, StreamRequest request, StreamAttemptListener& listener)
    : m_connections(connections)
    , m_request(std::move(request))
    , m_listener(listener)
    , m_hops{ Hop{ m_request.url, 0 } }
{
    askNext();
}

StreamAttempt::~StreamAttempt() = default;

void StreamAttempt::setReading(bool reading)
{
    m_isReading = reading;
    if (m_connection)
        m_connection->setReading(reading);
}

void StreamAttempt::askNext()
{
    m_hop = std::move(m_hops.front());
    m_hops.pop_front();
    ++m_hopsAsked;
    m_head = {};
    m_icy.emplace(std::nullopt);
    m_first = {};
    m_position = 0;
    m_connection = m_connections.open(StreamRequest{ m_hop.url, m_request.headers, m_request.visit }, *this);
    if (!m_isReading)
        m_connection->setReading(false);
}

void StreamAttempt::headReceived(const StreamHead& head)
{
    m_head = head;
    m_icy.emplace(head.metadataInterval);
}

void StreamAttempt::bytesReceived(QByteArrayView bytes)
{
    IcyOutput output = m_icy->read(bytes);
    if (m_sounds) {
        give(output);
        return;
    }
    m_first.sound += output.sound;
    m_first.titles.insert(m_first.titles.end(), output.titles.begin(), output.titles.end());
    // Nothing follows the judgement: it may have been the last word.
    (void)judge(BodyEnd::NotYet);
}

void StreamAttempt::ended(const AudioErrorChain& told)
{
    // It may belong to the connection.
    const AudioErrorChain cause = told;
    m_connection.reset();
    const bool cleanEnd = !cause.empty() && cause.front().domain == AudioErrorDomain::closed;
    const int hopsBefore = m_hopsAsked;
    if (!m_sounds && cleanEnd && (!judge(BodyEnd::Reached) || m_hopsAsked != hopsBefore))
        return;
    if (m_sounds)
        m_listener.attemptEnded(*this, cause);
    else
        (void)hopFailed(cause);
}

bool StreamAttempt::judge(BodyEnd end)
{
    if (m_first.sound.isEmpty() && end == BodyEnd::NotYet)
        return true;
    if (m_first.sound.isEmpty())
        return hopFailed(streamError(GstError::streamTypeNotFound, QStringLiteral("an answer without a body")));
    return obey(sniffBody(m_first.sound, m_head.contentType, end));
}

bool StreamAttempt::obey(const SniffedBody& body)
{
    switch (body.kind) {
    case BodyKind::NeedsMore:
        return true;
    case BodyKind::Sound:
        beginSound(body);
        return true;
    case BodyKind::Playlist:
        return followList();
    case BodyKind::SegmentList: {
        const QUrl url = finalUrl();
        m_listener.segmentListFound(*this, url);
        return false;
    }
    case BodyKind::NotSound:
        return hopFailed(streamError(GstError::streamWrongType, QStringLiteral("the answer is no sound")));
    }
    return true;
}

QUrl StreamAttempt::finalUrl() const
{
    return m_head.url.isEmpty() ? m_hop.url : m_head.url;
}

bool StreamAttempt::followList()
{
    if (m_hop.depth >= deepestList)
        return hopFailed(streamError(GstError::streamTypeNotFound, QStringLiteral("lists within lists")));
    const QList<QUrl> addresses = readPlaylist(m_first.sound, finalUrl());
    // A list within a list comes before the rest of the outer one.
    for (auto address = addresses.crbegin(); address != addresses.crend(); ++address)
        m_hops.push_front(Hop{ *address, m_hop.depth + 1 });
    if (addresses.isEmpty())
        return hopFailed(streamError(GstError::streamTypeNotFound, QStringLiteral("a list without an address")));
    if (m_hopsAsked >= mostHops)
        return hopFailed(streamError(GstError::streamTypeNotFound, QStringLiteral("too many lists")));
    askNext();
    return true;
}

bool StreamAttempt::hopFailed(const AudioErrorChain& cause)
{
    if (m_firstCause.empty())
        m_firstCause = cause;
    if (m_hops.empty() || m_hopsAsked >= mostHops) {
        // The listener destroys this while it reads.
        const AudioErrorChain firstCause = m_firstCause;
        m_listener.attemptEnded(*this, firstCause);
        return false;
    }
    askNext();
    return true;
}

void StreamAttempt::beginSound(const SniffedBody& body)
{
    qCDebug(liveLog) << "sound from" << m_hop.url.toDisplayString() << "of type" << m_head.contentType;
    m_sounds = true;
    m_listener.soundFound(*this, FoundSound{ body.format, m_head.claimedBitRate, body.start });
    give(std::exchange(m_first, {}));
}

void StreamAttempt::give(const IcyOutput& output)
{
    QByteArrayView left = output.sound;
    for (const TitleMark& mark : output.titles) {
        const qsizetype before = std::clamp<qsizetype>(mark.position - m_position, 0, left.size());
        if (before > 0)
            m_listener.attemptGaveSound(*this, left.first(before));
        left = left.sliced(before);
        m_position += before;
        m_listener.attemptGaveTitle(*this, mark.title);
    }
    if (!left.isEmpty())
        m_listener.attemptGaveSound(*this, left);
    m_position += left.size();
}

}
