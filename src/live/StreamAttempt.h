// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/BodySniffer.h"
#include "live/Connection.h"
#include "live/IcyReader.h"

#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace velarin::live {

class StreamAttempt;

struct FoundSound
{
    SoundFormat format{ SoundFormat::Other };
    std::optional<qint64> claimedBitRate;
    // Bytes before the first frame, for who begins with this sound.
    qsizetype start{ 0 };
};

// On the engine's thread. Order: soundFound() at most once, then sound and titles, then attemptEnded() or
// segmentListFound(), which come last. The attempt may be destroyed in those two and in no other of its own calls.
class StreamAttemptListener
{
public:
    virtual ~StreamAttemptListener() = default;

    virtual void soundFound(StreamAttempt& attempt, const FoundSound& sound) = 0;
    virtual void attemptGaveSound(StreamAttempt& attempt, QByteArrayView bytes) = 0;
    virtual void attemptGaveTitle(StreamAttempt& attempt, const QString& title) = 0;
    virtual void segmentListFound(StreamAttempt& attempt, const QUrl& url) = 0;
    virtual void attemptEnded(StreamAttempt& attempt, const AudioErrorChain& cause) = 0;
};

// Asks an address once, until it gives sound or is known not to: judges the body by its first bytes, follows lists of
// addresses (two levels; the addresses of a list one after the other), takes the titles out.
class StreamAttempt final : private ConnectionListener
{
public:
    StreamAttempt(ConnectionFactory& connections, StreamRequest request, StreamAttemptListener& listener);
    ~StreamAttempt() override;
    StreamAttempt(const StreamAttempt&) = delete;
    StreamAttempt& operator=(const StreamAttempt&) = delete;

    void setReading(bool reading);

private:
    // Addresses asked by one attempt at the most, whatever the lists say.
    static constexpr int mostHops = 8;
    static constexpr int deepestList = 2;
    struct Hop
    {
        QUrl url;
        int depth{ 0 };
    };

    void headReceived(const StreamHead& head) override;
    void bytesReceived(QByteArrayView bytes) override;
    void ended(const AudioErrorChain& told) override;

    void askNext();
    // False: the listener was told the last word, and may have destroyed this.
    [[nodiscard]] bool judge(BodyEnd end);
    [[nodiscard]] bool obey(const SniffedBody& body);
    // After redirects.
    [[nodiscard]] QUrl finalUrl() const;
    [[nodiscard]] bool followList();
    [[nodiscard]] bool hopFailed(const AudioErrorChain& cause);
    void beginSound(const SniffedBody& body);
    void give(const IcyOutput& output);

    ConnectionFactory& m_connections;
    const StreamRequest m_request;
    StreamAttemptListener& m_listener;

    std::deque<Hop> m_hops;
    Hop m_hop;
    int m_hopsAsked{ 0 };
    bool m_isReading{ true };
    // The first thing that went wrong, told when the last address has failed too.
    AudioErrorChain m_firstCause;

    // Of the present hop.
    std::unique_ptr<Connection> m_connection;
    StreamHead m_head;
    std::optional<IcyReader> m_icy;
    // What came before the body was judged.
    IcyOutput m_first;
    bool m_sounds{ false };
    // Sound bytes given before the present piece, as the reader counts them.
    qint64 m_position{ 0 };
};

}
