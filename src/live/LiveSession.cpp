// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/LiveSession.h"

#include "live/LiveEngine.h"
#include "live/LiveLog.h"
#include "live/SoundMemory.h"
#include "live/StartPlan.h"
#include "live/StreamSource.h"
#include "live/hls/HlsSource.h"

#include <algorithm>
#include <utility>

namespace velarin::live {

LiveSession::LiveSession(const AudioItem& item, float volume, Parts parts)
    : m_item(item)
    , m_parts(std::move(parts))
    , m_loop(m_parts.engine.loop())
    , m_request{ item.url, item.headers, m_parts.engine.connections().beginVisit() }
    , m_forwardBuffer(item.forwardBufferDuration)
    , m_pipeline(m_parts.engine.pipelines().make(*this))
    , m_feeder(*m_pipeline)
{
    m_pipeline->setVolume(volume);
    LiveSourceListener& listener = *this;
    m_source = std::make_unique<StreamSource>(m_loop, m_parts.engine.connections(), m_request, listener);
}

LiveSession::~LiveSession()
{
    if (m_isHeard)
        m_parts.memory.sounded(m_item.url, m_loop.now());
}

void LiveSession::play()
{
    if (m_phase == Phase::Over || std::exchange(m_wantsToPlay, true))
        return;
    m_isPaused = false;
    m_parts.tell(TimeControl::Waiting);
    if (m_phase == Phase::Sounding)
        m_pipeline->play();
    if (m_drySince)
        m_drySince = m_loop.now();
    takeStock();
    judgeOutage();
}

void LiveSession::pause()
{
    if (m_phase == Phase::Over)
        return;
    m_wantsToPlay = false;
    m_isPaused = true;
    if (m_isHeard)
        m_parts.memory.sounded(m_item.url, m_loop.now());
    m_isHeard = false;
    m_pipeline->pause();
    stopTimers();
    noteHeard();
    updateReading();
    m_parts.tell(TimeControl::Paused);
}

void LiveSession::setVolume(float volume)
{
    if (m_pipeline)
        m_pipeline->setVolume(volume);
}

void LiveSession::stretchStarted(SoundFormat format, std::optional<qint64> claimedBitRate)
{
    if (m_phase != Phase::Over)
        m_feeder.startStretch(format, claimedBitRate);
}

void LiveSession::soundReceived(QByteArrayView bytes)
{
    take(bytes, std::nullopt);
}

void LiveSession::measuredSoundReceived(QByteArrayView bytes, Seconds lasting)
{
    take(bytes, lasting);
}

void LiveSession::titleReceived(const QString& title)
{
    m_titles.add(m_ledger.received(), title);
    tellTitles();
}

void LiveSession::sourceFailed(const AudioErrorChain& cause)
{
    failToBegin(cause);
}

void LiveSession::outageBegan(const AudioErrorChain& cause, Mending mending)
{
    m_outage = Outage{ cause, mending };
    if (m_isHeard)
        m_parts.memory.sounded(m_item.url, m_loop.now());
    const bool neverBegan = !m_hasSounded && m_phase == Phase::Filling;
    if (neverBegan && mending == Mending::No && !cause.empty())
        failToBegin(cause);
    judgeOutage();
}

void LiveSession::outageEnded()
{
    m_outage.reset();
    m_judgement.cancel();
}

void LiveSession::segmentListFound(const QUrl& url)
{
    qCDebug(liveLog) << "a list of segments:" << url.toDisplayString();
    // The present source is what is calling.
    m_change = m_loop.after(std::chrono::nanoseconds(0), [this, url] {
        LiveSourceListener& listener = *this;
        m_source = std::make_unique<HlsSource>(
            m_loop, m_parts.engine.connections(), m_request, url, m_item.peakBitRate, listener);
        m_source->setReading(m_isReading);
    });
}

Seconds LiveSession::soundReceivedSoFar() const
{
    return m_ledger.received();
}

Seconds LiveSession::soundInHand() const
{
    return m_ledger.inHand(heard(), m_feeder.reserve().seconds());
}

void LiveSession::needsBytes(BranchId branch)
{
    if (m_phase == Phase::Over)
        return;
    m_feeder.needsBytes(branch);
    takeStock();
}

void LiveSession::branchFailed(BranchId branch, const AudioErrorChain& cause)
{
    if (m_phase == Phase::Over)
        return;
    const bool isNewest = m_feeder.branchFailed(branch);
    const Seconds decoded{ m_pipeline->decodedSeconds() };
    m_ledger.settle(heard(), m_feeder.reserve().seconds() + std::max(decoded - heard(), Seconds(0.0)));
    if (!isNewest)
        return;
    if (!m_hasSounded && decoded <= Seconds(0.0))
        failToBegin(cause);
    else
        m_source->refuseSound(cause);
}

// Its successor was opened before; there is nothing left to do for it.
void LiveSession::branchFinished(BranchId branch)
{
    qCDebug(liveLog) << "branch" << branch << "has sounded";
}

void LiveSession::titleFound(BranchId branch, double seconds, const QString& title)
{
    m_titles.add(m_feeder.placeOf(branch) + Seconds(seconds), title);
    tellTitles();
}

void LiveSession::soundHeard()
{
    if (m_phase == Phase::Over || !m_wantsToPlay)
        return;
    m_isHeard = true;
    m_hasSounded = true;
    m_drySince.reset();
    m_judgement.cancel();
    m_parts.memory.sounded(m_item.url, m_loop.now());
    tellReadyIfDecoded();
    m_parts.tell(TimeControl::Playing);
    tellTitles();
}

void LiveSession::ranDry()
{
    if (m_phase != Phase::Sounding || !m_wantsToPlay)
        return;
    tellTitles();
    m_isHeard = false;
    m_titleDue.cancel();
    m_ledger.settle(heard(), m_feeder.reserve().seconds());
    m_pipeline->pause();
    m_phase = Phase::Filling;
    m_drySince = m_loop.now();
    if (m_hasSounded) {
        m_parts.memory.sounded(m_item.url, m_loop.now());
        m_parts.tell(TimeControl::Waiting);
        m_parts.tell(Stalled{});
    }
    judgeOutage();
    takeStock();
}

void LiveSession::deviceFailed(const AudioErrorChain& cause)
{
    if (m_phase == Phase::Over)
        return;
    if (m_hasSounded)
        pause();
    else
        failToBegin(cause);
}

void LiveSession::take(QByteArrayView bytes, std::optional<Seconds> lasting)
{
    if (m_phase == Phase::Over)
        return;
    m_ledger.received(m_feeder.add(bytes, lasting));
    takeStock();
}

void LiveSession::takeStock()
{
    if (m_phase == Phase::Over)
        return;
    noteHeard();
    beginSoundingIfFilled();
    tellReadyIfDecoded();
    updateReading();
}

void LiveSession::updateReading()
{
    const Seconds inHand = soundInHand();
    const Seconds most = soundToStopReading(m_forwardBuffer);
    const bool isFull = inHand >= most || m_feeder.reserve().bytes() >= bytesToStopReading;
    const bool hasRoom = inHand < most - soundToReadOn && m_feeder.reserve().bytes() < bytesToStopReading / 2;
    const bool reading = !m_isPaused && (m_isReading ? !isFull : hasRoom);
    if (reading != std::exchange(m_isReading, reading))
        m_source->setReading(reading);
}

void LiveSession::beginSoundingIfFilled()
{
    const Seconds wanted = m_hasSounded ? soundToGoOn(m_forwardBuffer) : soundToStart(m_forwardBuffer);
    if (m_phase != Phase::Filling || soundInHand() < wanted)
        return;
    m_phase = Phase::Sounding;
    if (m_isReady)
        m_parts.tell(BecameLikelyToKeepUp{});
    if (m_wantsToPlay)
        m_pipeline->play();
}

void LiveSession::tellReadyIfDecoded()
{
    if (m_isReady || m_phase != Phase::Sounding || m_pipeline->decodedSeconds() <= 0.0)
        return;
    m_isReady = true;
    m_parts.tell(BecameReady{});
    m_parts.tell(BecameLikelyToKeepUp{});
}

void LiveSession::judgeOutage()
{
    if (m_phase == Phase::Over || !m_outage || !m_drySince || !m_wantsToPlay)
        return;
    const Seconds dryFor = m_loop.now() - *m_drySince;
    const OutageFacts facts{ .cause = m_outage->cause, .mending = m_outage->mending, .dryFor = dryFor };
    const Outcome outcome = planOutcome(facts);
    if (outcome == Outcome::Wait) {
        if (dryFor < dryTimeToTheEnd)
            m_judgement = m_loop.after(toClock(dryTimeToTheEnd - dryFor), [this] { judgeOutage(); });
        return;
    }
    if (!m_hasSounded) {
        failToBegin(m_outage->cause);
        return;
    }
    if (outcome == Outcome::PlayedToEnd)
        m_parts.tell(PlayedToEnd{});
    else
        m_parts.tell(FailedToPlayToEnd{ m_outage->cause });
    end();
}

void LiveSession::failToBegin(const AudioErrorChain& cause)
{
    if (m_phase == Phase::Over)
        return;
    const bool soundedOfLate = m_parts.memory.hasSounded(m_item.url, m_loop.now());
    const FirstFailure failure = planFirstFailure(cause, soundedOfLate);
    if (failure.httpStatus)
        m_parts.tell(HttpStatusSeen{ *failure.httpStatus });
    m_parts.tell(CouldNotPlay{ failure.cause });
    end();
}

// The source and the pipeline may be what is calling: they go in the next turn.
void LiveSession::end()
{
    m_phase = Phase::Over;
    m_isHeard = false;
    stopTimers();
    noteHeard();
    m_pipeline->pause();
    m_change.cancel();
    m_clearing = m_loop.after(std::chrono::nanoseconds(0), [this] {
        m_source.reset();
        m_pipeline.reset();
    });
}

Seconds LiveSession::heard() const
{
    return Seconds(m_pipeline->heardSeconds());
}

void LiveSession::noteHeard()
{
    m_parts.heard->store(m_pipeline->heardSeconds(), std::memory_order_relaxed);
}

void LiveSession::tellTitles()
{
    if (!m_isHeard)
        return;
    // Closer than anybody could hear.
    constexpr Seconds now{ 0.02 };
    const Seconds place = m_ledger.place(heard());
    if (const std::optional<QString> title = m_titles.takeDue(place + now))
        m_parts.tell(TitleHeard{ *title });
    if (const std::optional<Seconds> next = m_titles.next())
        m_titleDue = m_loop.after(toClock(std::max(*next - place, now)), [this] { tellTitles(); });
}

void LiveSession::stopTimers()
{
    m_titleDue.cancel();
    m_judgement.cancel();
}

}
