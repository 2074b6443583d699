// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/EngineLoop.h"
#include "live/GapMeter.h"
#include "live/LiveSource.h"
#include "live/Splice.h"
#include "live/StreamAttempt.h"

#include <memory>
#include <optional>
#include <vector>

namespace velarin::live {

// The bytes of an address that streams. It keeps the sound coming: when a connection that has earned it ends or falls
// silent, the item's first address is asked again until something gives sound, whatever it answers in between, and the
// new bytes go on after the last old one where they overlap. Before the first sound it mends nothing.
class StreamSource final : public LiveSource, private StreamAttemptListener
{
public:
    StreamSource(EngineLoop& loop, ConnectionFactory& connections, StreamRequest request, LiveSourceListener& listener);
    ~StreamSource() override;

    void setReading(bool reading) override;
    void refuseSound(const AudioErrorChain& cause) override;

private:
    // An attempt of a mend that has given no sound yet.
    struct Ask
    {
        std::unique_ptr<StreamAttempt> attempt;
        std::chrono::nanoseconds since{ 0 };
    };
    struct Outage
    {
        // The first one; empty: silence.
        AudioErrorChain cause;
        Mending mending{ Mending::No };
        int asked{ 0 };
        std::chrono::nanoseconds lastAsk{ 0 };
    };

    void soundFound(StreamAttempt& attempt, const FoundSound& sound) override;
    void attemptGaveSound(StreamAttempt& attempt, QByteArrayView bytes) override;
    void attemptGaveTitle(StreamAttempt& attempt, const QString& title) override;
    void segmentListFound(StreamAttempt& attempt, const QUrl& url) override;
    void attemptEnded(StreamAttempt& attempt, const AudioErrorChain& cause) override;

    // Which connection gives the sound.
    [[nodiscard]] std::unique_ptr<StreamAttempt> attempt();
    void adopt(StreamAttempt& winner);
    void dropAsk(const StreamAttempt& attempt);
    [[nodiscard]] Seconds givenByConnection() const;

    // Where its sound goes.
    void startStretch();
    void pass(QByteArrayView bytes);
    void search(QByteArrayView bytes);
    void endSearch();
    void limitSearch();

    // Silence.
    void watchSilence(Seconds within);
    void lookForSilence();
    [[nodiscard]] Seconds silenceAllowed() const;

    // Outages.
    void connectionLost(const AudioErrorChain& cause);
    void breakOff(const AudioErrorChain& cause, Mending mending);
    void goOnAsking(const AudioErrorChain& cause);
    void mended();
    void planNextAsk();
    void ask();

    EngineLoop& m_loop;
    ConnectionFactory& m_connections;
    const StreamRequest m_request;
    LiveSourceListener& m_listener;

    // The connection that gives the sound, or should; absent while all that is left is to ask.
    std::unique_ptr<StreamAttempt> m_current;
    FoundSound m_sound;
    Seconds m_receivedBefore{ 0.0 };
    bool m_isReading{ true };
    // It answered a mend and has given nothing new yet.
    bool m_isAnswer{ false };

    // The end of what was received, as long as the present stretch can be gone on with.
    SpliceTail m_tail;
    std::optional<SoundFormat> m_stretch;
    std::optional<Splice> m_splice;
    // The latest title of a connection whose sound is not known to join yet.
    std::optional<QString> m_titleInSearch;
    Task m_searchLimit;

    GapMeter m_gaps;
    std::chrono::nanoseconds m_lastArrival{ 0 };
    Seconds m_inHandAtArrival{ 0.0 };
    Task m_silence;

    // The last outage; under way or mended by the present connection.
    std::optional<Outage> m_outage;
    bool m_isOut{ false };
    std::vector<Ask> m_asks;
    Task m_nextAsk;
};

}
