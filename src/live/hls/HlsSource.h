// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/LiveSource.h"
#include "live/hls/HlsLists.h"
#include "live/hls/HlsSegmentLoader.h"
#include "live/hls/HlsSegmentReader.h"

namespace velarin::live {

// The sound of a station that gives it in segments (RFC 8216). It takes one segment after the other from the list that
// HlsLists keeps fresh; segments that follow each other go into one stretch. What is missing is skipped, a list that is
// gone is found again, a variant that fails is left for the next lower; it never goes up again.
class HlsSource final : public LiveSource, private HlsListsListener, private HlsSegmentLoaderListener
{
public:
    // `request`: the item's own; `found`: the address under which a list of segments or variants was seen.
    // `peakBitRate` in bits per second; 0: no limit.
    HlsSource(EngineLoop& loop, ConnectionFactory& connections, const StreamRequest& request, const QUrl& found,
        qint64 peakBitRate, LiveSourceListener& listener);
    ~HlsSource() override;

    void setReading(bool reading) override;
    void refuseSound(const AudioErrorChain& cause) override;

private:
    struct Outage
    {
        AudioErrorChain cause;
        Mending mending{ Mending::Yes };
    };

    void listReceived(const HlsMediaPlaylist& list, HlsListOrigin origin, int standstills) override;
    void listFailed(const AudioErrorChain& cause) override;
    void listsFailed(const AudioErrorChain& cause) override;
    void segmentBegan(const QByteArray& map) override;
    void segmentBytes(QByteArrayView bytes) override;
    void segmentLoaded() override;
    void segmentFailed(const AudioErrorChain& cause) override;
    [[nodiscard]] Seconds reserve() const override;

    // What comes next.
    void takeNext();
    [[nodiscard]] std::optional<HlsNext> next() const;
    void take(const HlsSegment& segment, HlsJoint joint);
    void lose(const AudioErrorChain& cause);
    void listIsUsedUp();

    // What it gives.
    void give(const std::vector<HlsItem>& items);
    void give(const HlsSound& sound);

    // What goes wrong.
    void breakOff(const AudioErrorChain& cause, Mending mending);
    void fail(const AudioErrorChain& cause);

    EngineLoop& m_loop;
    LiveSourceListener& m_listener;
    const HlsRequests m_requests;
    bool m_isReading{ true };
    // The last word was told.
    bool m_isOver{ false };

    std::optional<HlsMediaPlaylist> m_list;
    // The segment that was taken last, and the last one that came whole.
    std::optional<HlsPosition> m_position;
    std::optional<HlsPosition> m_lastWhole;
    HlsSegment m_segment;
    int m_lostInARow{ 0 };
    AudioErrorChain m_firstLoss;

    // The stretch of sound.
    std::optional<SoundFormat> m_stretch;
    bool m_breaks{ false };
    HlsSegmentReader m_reader;
    // The sound received when it could last not be played, and how often that was so of late.
    Seconds m_refusedAt{ 0.0 };
    int m_refusals{ 0 };

    std::optional<Outage> m_outage;
    Task m_resumption;

    HlsSegmentLoader m_loader;
    // Last: it gives work to all of the above.
    HlsLists m_lists;
};

}
