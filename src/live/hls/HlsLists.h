// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/EngineLoop.h"
#include "live/Seconds.h"
#include "live/hls/HlsFetch.h"
#include "live/hls/HlsPlan.h"

namespace velarin::live {

// Which list came.
enum class HlsListOrigin
{
    // The one that came before, as it is now.
    Same,
    // Another one, or under another address: addresses of segments cannot be compared with the former list's.
    Other,
};

// On the engine's thread, never from inside a call. HlsLists is not destroyed from inside these calls.
class HlsListsListener
{
public:
    virtual ~HlsListsListener() = default;

    // `standstills`: how many times in a row it brought nothing new.
    virtual void listReceived(const HlsMediaPlaylist& list, HlsListOrigin origin, int standstills) = 0;
    // A list did not come; it is asked for again.
    virtual void listFailed(const AudioErrorChain& cause) = 0;
    // None ever came, and none will. Final; the cause is the first one.
    virtual void listsFailed(const AudioErrorChain& cause) = 0;
    // Seconds of sound in reserve: what a slow list may cost.
    [[nodiscard]] virtual Seconds reserve() const = 0;
};

// Keeps the list of segments fresh: chooses the variant, asks for its list again and again, and finds another way to it
// where it is gone.
class HlsLists final : private HlsFetchListener
{
public:
    struct Station
    {
        // What the listener chose.
        QUrl home;
        // Where the first list was found; may be the same.
        QUrl found;
        // Bits per second at the most; 0: no limit.
        qint64 peakBitRate{ 0 };
    };

    HlsLists(EngineLoop& loop, const HlsRequests& requests, Station station, HlsListsListener& listener);
    ~HlsLists() override;
    HlsLists(const HlsLists&) = delete;
    HlsLists& operator=(const HlsLists&) = delete;

    // While it does not read, it asks nothing.
    void setReading(bool reading);
    // The variant's segments cannot be had, or not be played. Answers whether there is another; its list follows then.
    [[nodiscard]] bool leaveVariant();

private:
    void fetched(QByteArrayView bytes) override;
    void fetchEnded(const AudioErrorChain& cause) override;

    void ask(const QUrl& url);
    void askLater(const QUrl& url, std::chrono::nanoseconds wait);
    [[nodiscard]] bool askVariant();
    [[nodiscard]] std::optional<qsizetype> otherVariant() const;
    void read();
    void take(const HlsMasterPlaylist& master);
    void take(const HlsMediaPlaylist& list);
    void fail(const AudioErrorChain& cause, bool isRefused);
    void obey(const HlsListPlan& plan);
    [[nodiscard]] bool asksHome() const { return m_asked == m_station.home || m_asked == m_station.found; }

    EngineLoop& m_loop;
    const HlsRequests& m_requests;
    Station m_station;
    HlsListsListener& m_listener;
    bool m_isReading{ true };

    std::optional<HlsMasterPlaylist> m_master;
    // Of the master's; absent without one.
    std::optional<qsizetype> m_variant;
    QSet<qsizetype> m_failed;
    // Where the list is asked for again.
    QUrl m_listUrl;
    // Absent until one came.
    std::optional<HlsMediaPlaylist> m_list;
    HlsListOrigin m_origin{ HlsListOrigin::Other };
    int m_standstills{ 0 };
    int m_failures{ 0 };
    AudioErrorChain m_firstCause;

    // The present request, or the next one.
    QUrl m_asked;
    QByteArray m_body;
    std::unique_ptr<HlsFetch> m_fetch;
    Task m_patience;
    std::optional<std::chrono::nanoseconds> m_nextAsk;
    Task m_nextAskTimer;
};

}
