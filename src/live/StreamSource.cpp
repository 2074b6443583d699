// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/StreamSource.h"

#include "live/LiveLog.h"
#include "live/MendPlan.h"

#include <algorithm>
#include <utility>

namespace velarin::live {

StreamSource::StreamSource(
    EngineLoop& loop, ConnectionFactory& connections, StreamRequest request, LiveSourceListener& listener)
    : m_loop(loop)
    , m_connections(connections)
    , m_request(std::move(request))
    , m_listener(listener)
    , m_current(attempt())
{
}

StreamSource::~StreamSource() = default;

void StreamSource::setReading(bool reading)
{
    if (reading == std::exchange(m_isReading, reading))
        return;
    if (m_current)
        m_current->setReading(reading);
    m_gaps.interrupt();
    if (!reading) {
        m_silence.cancel();
        m_searchLimit.cancel();
        m_nextAsk.cancel();
        m_asks.clear();
        return;
    }
    m_lastArrival = m_loop.now();
    m_inHandAtArrival = m_listener.soundInHand();
    if (m_current && m_stretch)
        watchSilence(silenceAllowed());
    limitSearch();
    if (m_isOut && m_outage->mending == Mending::Yes)
        planNextAsk();
}

void StreamSource::refuseSound(const AudioErrorChain& cause)
{
    m_stretch.reset();
    m_tail.clear();
    m_splice.reset();
    m_current.reset();
    m_silence.cancel();
    m_searchLimit.cancel();
    // A connection that came of a mend is one more answer that is no sound. Any other is not worth asking again: the
    // next one would give the same.
    if (m_outage && (m_isOut || !earnsMend(givenByConnection())))
        goOnAsking(cause);
    else
        breakOff(cause, Mending::No);
}

void StreamSource::soundFound(StreamAttempt& attempt, const FoundSound& sound)
{
    adopt(attempt);
    m_sound = sound;
    m_receivedBefore = m_listener.soundReceivedSoFar();
    m_gaps = {};
    m_lastArrival = m_loop.now();
    m_inHandAtArrival = m_listener.soundInHand();
    m_titleInSearch.reset();
    m_searchLimit.cancel();
    watchSilence(silenceAllowed());
    m_splice.reset();
    const bool mayJoin = m_stretch == sound.format && !m_tail.bytes().isEmpty();
    if (mayJoin)
        m_splice.emplace(m_tail.bytes());
    if (mayJoin)
        limitSearch();
    else
        startStretch();
}

void StreamSource::attemptGaveSound(StreamAttempt& attempt, QByteArrayView bytes)
{
    if (&attempt != m_current.get())
        return;
    m_lastArrival = m_loop.now();
    m_gaps.arrived(m_lastArrival);
    if (m_splice)
        search(bytes);
    else
        pass(bytes);
    m_inHandAtArrival = m_listener.soundInHand();
}

void StreamSource::attemptGaveTitle(StreamAttempt& attempt, const QString& title)
{
    if (&attempt != m_current.get())
        return;
    if (m_splice)
        m_titleInSearch = title;
    else
        m_listener.titleReceived(title);
}

void StreamSource::segmentListFound(StreamAttempt& attempt, const QUrl& url)
{
    if (&attempt != m_current.get()) {
        dropAsk(attempt);
        planNextAsk();
        return;
    }
    m_current.reset();
    m_listener.segmentListFound(url);
}

void StreamSource::attemptEnded(StreamAttempt& attempt, const AudioErrorChain& cause)
{
    if (&attempt == m_current.get()) {
        connectionLost(cause);
        return;
    }
    dropAsk(attempt);
    planNextAsk();
}

std::unique_ptr<StreamAttempt> StreamSource::attempt()
{
    StreamAttemptListener& listener = *this;
    return std::make_unique<StreamAttempt>(m_connections, m_request, listener);
}

void StreamSource::adopt(StreamAttempt& winner)
{
    const auto isWinner = [&winner](const Ask& ask) { return ask.attempt.get() == &winner; };
    const auto found = std::find_if(m_asks.begin(), m_asks.end(), isWinner);
    if (found == m_asks.end())
        return;
    m_current = std::move(found->attempt);
    m_isAnswer = true;
    m_asks.clear();
    m_nextAsk.cancel();
}

void StreamSource::dropAsk(const StreamAttempt& attempt)
{
    std::erase_if(m_asks, [&attempt](const Ask& ask) { return ask.attempt.get() == &attempt; });
}

Seconds StreamSource::givenByConnection() const
{
    return m_listener.soundReceivedSoFar() - m_receivedBefore;
}

void StreamSource::startStretch()
{
    m_stretch = m_sound.format;
    m_tail.clear();
    m_listener.stretchStarted(m_sound.format, m_sound.claimedBitRate);
}

void StreamSource::pass(QByteArrayView bytes)
{
    // What comes before the first frame of a stretch is of no use to a decoder.
    const qsizetype skipped = std::min(std::exchange(m_sound.start, 0), bytes.size());
    const QByteArrayView sound = bytes.sliced(skipped);
    if (sound.isEmpty())
        return;
    m_tail.append(sound);
    mended();
    m_listener.soundReceived(sound);
}

void StreamSource::search(QByteArrayView bytes)
{
    if (m_splice->look(bytes) != Splice::Verdict::NeedsMore)
        endSearch();
}

void StreamSource::endSearch()
{
    m_searchLimit.cancel();
    const bool joins = m_splice->verdict() == Splice::Verdict::Overlaps;
    const QByteArray onward = m_splice->onward();
    m_splice.reset();
    qCDebug(liveLog) << "mended" << (joins ? "within the sound," : "behind the sound,") << onward.size() << "bytes on";
    if (joins)
        m_sound.start = 0;
    else
        startStretch();
    if (const std::optional<QString> title = std::exchange(m_titleInSearch, std::nullopt))
        m_listener.titleReceived(*title);
    pass(onward);
}

void StreamSource::limitSearch()
{
    if (!m_splice)
        return;
    const Seconds limit = searchTime(m_listener.soundInHand(), Splice::longestSearch);
    m_searchLimit = m_loop.after(toClock(limit), [this] {
        m_splice->giveUp();
        endSearch();
    });
}

void StreamSource::watchSilence(Seconds within)
{
    m_silence = m_loop.after(toClock(within), [this] { lookForSilence(); });
}

// One timer serves many arrivals: it is set anew when it fires, not for each piece of the stream.
void StreamSource::lookForSilence()
{
    const Seconds left = silenceAllowed() - Seconds(m_loop.now() - m_lastArrival);
    if (left > Seconds(0.001)) {
        watchSilence(left);
        return;
    }
    watchSilence(silenceAllowed());
    if (m_isOut)
        planNextAsk();
    else
        breakOff({}, earnsMend(givenByConnection()) ? Mending::Yes : Mending::No);
}

Seconds StreamSource::silenceAllowed() const
{
    return silenceThreshold(m_inHandAtArrival, m_gaps.longest(m_loop.now()));
}

void StreamSource::connectionLost(const AudioErrorChain& cause)
{
    m_current.reset();
    m_silence.cancel();
    m_searchLimit.cancel();
    m_splice.reset();
    if (!m_stretch && !m_outage) {
        m_listener.sourceFailed(cause);
        return;
    }
    // One that gave nothing new is an answer like any other, not a connection.
    if (m_isOut || givenByConnection() <= Seconds(0.0))
        goOnAsking(cause);
    else
        breakOff(cause, earnsMend(givenByConnection()) ? Mending::Yes : Mending::No);
}

void StreamSource::breakOff(const AudioErrorChain& cause, Mending mending)
{
    m_outage = Outage{ .cause = cause, .mending = mending };
    m_isOut = true;
    qCDebug(liveLog) << "sound broke off:" << (cause.empty() ? QStringLiteral("silence") : cause.front().text)
                     << (mending == Mending::Yes ? "asking again" : "not asking again");
    m_listener.outageBegan(cause, mending);
    planNextAsk();
}

void StreamSource::goOnAsking(const AudioErrorChain& cause)
{
    if (!m_outage)
        m_outage = Outage{};
    // Silence was only a guess at what has now happened to that connection.
    if (m_outage->cause.empty() && !m_isAnswer)
        m_outage->cause = cause;
    m_isOut = true;
    m_listener.outageBegan(m_outage->cause, m_outage->mending);
    planNextAsk();
}

void StreamSource::mended()
{
    m_isAnswer = false;
    if (!std::exchange(m_isOut, false))
        return;
    m_asks.clear();
    m_nextAsk.cancel();
    m_listener.outageEnded();
}

void StreamSource::planNextAsk()
{
    if (!m_isReading || !m_isOut || m_outage->mending == Mending::No)
        return;
    const auto now = m_loop.now();
    AskFacts facts{ .asked = m_outage->asked, .sinceLastAsk = Seconds(now - m_outage->lastAsk), .unanswered = {} };
    for (const Ask& ask : m_asks)
        facts.unanswered.emplace_back(now - ask.since);
    const AskPlan plan = planAsk(facts);
    m_nextAsk = m_loop.after(toClock(plan.wait), [this, plan] {
        if (plan.replaceYoungest)
            m_asks.pop_back();
        ask();
    });
}

void StreamSource::ask()
{
    const auto now = m_loop.now();
    ++m_outage->asked;
    m_outage->lastAsk = now;
    m_asks.push_back(Ask{ attempt(), now });
    planNextAsk();
}

}
