// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/EngineLoop.h"
#include "live/Seconds.h"
#include "live/hls/HlsDecipher.h"
#include "live/hls/HlsFetch.h"

#include <deque>

namespace velarin::live {

// On the engine's thread, never from inside load(). Order: segmentBegan() once, its bytes, and one of the other two.
// The loader may be told to cancel() or to load() another segment from inside all but the first, and is not destroyed
// there.
class HlsSegmentLoaderListener
{
public:
    virtual ~HlsSegmentLoaderListener() = default;

    // `map`: what must stand before its stretch; empty where nothing must.
    virtual void segmentBegan(const QByteArray& map) = 0;
    // In the clear. Valid during the call only.
    virtual void segmentBytes(QByteArrayView bytes) = 0;
    virtual void segmentLoaded() = 0;
    // It does not come, or not in time. What came of it is all that will.
    virtual void segmentFailed(const AudioErrorChain& cause) = 0;
    // Seconds of sound in reserve.
    [[nodiscard]] virtual Seconds reserve() const = 0;
};

// Fetches one segment, with its key and its map: asks again where an answer breaks off and goes on at the very byte,
// undoes the encryption, and gives up in time for the reserve.
class HlsSegmentLoader final : private HlsFetchListener
{
public:
    HlsSegmentLoader(EngineLoop& loop, const HlsRequests& requests, HlsSegmentLoaderListener& listener);
    ~HlsSegmentLoader() override;
    HlsSegmentLoader(const HlsSegmentLoader&) = delete;
    HlsSegmentLoader& operator=(const HlsSegmentLoader&) = delete;

    // In place of what was under way. `targetDuration` in seconds.
    void load(const HlsSegment& segment, double targetDuration);
    void cancel();
    [[nodiscard]] bool isBusy() const { return m_part != Part::None; }
    void setReading(bool reading);

private:
    enum class Part
    {
        None,
        Key,
        Map,
        Body,
    };
    struct Known
    {
        Part part{ Part::None };
        QUrl url;
        std::optional<HlsByteRange> range;
        QByteArray bytes;
    };

    void fetched(QByteArrayView bytes) override;
    void fetchEnded(const AudioErrorChain& cause) override;

    void fetchNext();
    void fetch(Part part);
    [[nodiscard]] HlsFetch::Order order() const;
    [[nodiscard]] const QByteArray* known(Part part, const QUrl& url, const std::optional<HlsByteRange>& range) const;
    [[nodiscard]] const QByteArray* key() const;
    [[nodiscard]] const QByteArray* map() const;
    [[nodiscard]] QByteArray plainMap() const;
    void partLoaded();
    void bodyLoaded();
    void tryAgain(const AudioErrorChain& cause);
    void fail(const AudioErrorChain& cause);
    void watch();
    void timeIsOver();

    EngineLoop& m_loop;
    const HlsRequests& m_requests;
    HlsSegmentLoaderListener& m_listener;
    bool m_isReading{ true };
    // Keys and maps that were fetched, the latest last.
    std::deque<Known> m_known;

    // Raised whenever the present segment is left.
    int m_order{ 0 };

    // Of the present segment.
    HlsSegment m_segment;
    double m_targetDuration{ 1.0 };
    Part m_part{ Part::None };
    // Of the key or the map.
    QByteArray m_collected;
    // Of the body, as it is on the server.
    qint64 m_received{ 0 };
    std::unique_ptr<HlsDecipher> m_decipher;
    int m_tries{ 0 };
    bool m_isBegun{ false };
    std::chrono::nanoseconds m_since{ 0 };
    std::chrono::nanoseconds m_lastByte{ 0 };
    Seconds m_reserveBefore{ 0.0 };
    std::unique_ptr<HlsFetch> m_fetch;
    Task m_deadline;
    Task m_retry;
};

}
