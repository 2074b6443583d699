// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/BranchFeeder.h"
#include "live/Connection.h"
#include "live/EngineLoop.h"
#include "live/LiveEvent.h"
#include "live/LiveSource.h"
#include "live/SoundLedger.h"
#include "live/SoundPipeline.h"
#include "live/TitleClock.h"

#include <atomic>
#include <memory>
#include <optional>

namespace velarin::live {

class LiveEngine;
class SoundMemory;

// Seconds of an item's sound that were heard: written on the engine's thread, read on any.
using HeardTime = std::atomic<double>;

// One item from its first byte to its last sound: source, reserve and pipeline, and what is told of them. It begins
// when made, to be played when play() is called. Engine thread only.
class LiveSession final : private LiveSourceListener, private SoundPipelineListener
{
public:
    struct Parts
    {
        LiveEngine& engine;
        SoundMemory& memory;
        std::shared_ptr<HeardTime> heard;
        // Called on the engine's thread, from inside calls and out of them.
        LiveEventSink tell;
    };

    LiveSession(const AudioItem& item, float volume, Parts parts);
    ~LiveSession() override;

    void play();
    void pause();
    void setVolume(float volume);

private:
    enum class Phase
    {
        // Too little is in hand to let it sound.
        Filling,
        // The pipeline may sound whenever the listener wants.
        Sounding,
        // The last word was told.
        Over,
    };
    struct Outage
    {
        AudioErrorChain cause;
        Mending mending{ Mending::No };
    };

    void stretchStarted(SoundFormat format, std::optional<qint64> claimedBitRate) override;
    void soundReceived(QByteArrayView bytes) override;
    void measuredSoundReceived(QByteArrayView bytes, Seconds lasting) override;
    void titleReceived(const QString& title) override;
    void sourceFailed(const AudioErrorChain& cause) override;
    void outageBegan(const AudioErrorChain& cause, Mending mending) override;
    void outageEnded() override;
    void segmentListFound(const QUrl& url) override;
    [[nodiscard]] Seconds soundReceivedSoFar() const override;
    [[nodiscard]] Seconds soundInHand() const override;

    void needsBytes(BranchId branch) override;
    void branchFailed(BranchId branch, const AudioErrorChain& cause) override;
    void branchFinished(BranchId branch) override;
    void titleFound(BranchId branch, double seconds, const QString& title) override;
    void soundHeard() override;
    void ranDry() override;
    void deviceFailed(const AudioErrorChain& cause) override;

    // The flow of bytes.
    void take(QByteArrayView bytes, std::optional<Seconds> lasting);
    void takeStock();
    void updateReading();
    void beginSoundingIfFilled();
    void tellReadyIfDecoded();

    // The end.
    void judgeOutage();
    void failToBegin(const AudioErrorChain& cause);
    void end();

    // Times and titles.
    [[nodiscard]] Seconds heard() const;
    void noteHeard();
    void tellTitles();
    void stopTimers();

    const AudioItem m_item;
    const Parts m_parts;
    EngineLoop& m_loop;
    const StreamRequest m_request;
    const Seconds m_forwardBuffer;

    std::unique_ptr<SoundPipeline> m_pipeline;
    BranchFeeder m_feeder;
    SoundLedger m_ledger;
    TitleClock m_titles;
    Task m_titleDue;

    Phase m_phase{ Phase::Filling };
    bool m_wantsToPlay{ false };
    // By the listener; what is not yet played may fill.
    bool m_isPaused{ false };
    bool m_isReading{ true };
    bool m_isHeard{ false };
    bool m_hasSounded{ false };
    bool m_isReady{ false };

    std::optional<Outage> m_outage;
    std::optional<std::chrono::nanoseconds> m_drySince;
    Task m_judgement;
    Task m_clearing;
    Task m_change;

    // Last: it gives sound to all of the above.
    std::unique_ptr<LiveSource> m_source;
};

}
