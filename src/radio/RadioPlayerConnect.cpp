// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/RadioPlayer.h"

#include "catalogue/StationRepository.h"
#include "radio/RadioLog.h"
#include "radio/ReconnectPolicy.h"
#include "radio/Watchdogs.h"

namespace velarin {

void RadioPlayer::connectStream(qint64 attempt)
{
    if (!m_wantsAudio || !station())
        return;
    const qint64 generation = m_generation;
    setState(Connecting{ attempt, ReconnectPolicy::maxAttempts(m_services.repository.autoReconnect()) });
    // Whoever heard of it may have paused or chosen another station.
    if (!m_wantsAudio || m_generation != generation)
        return;
    const std::optional<QUrl> address = streamAddress();
    if (!address) {
        giveUp(PlaybackFailure::Kind::unsupported);
        return;
    }
    qCInfo(radioLog, "connect %s attempt %lld url=%s", qUtf8Printable(stationName()), attempt,
        qUtf8Printable(address->toDisplayString()));
    const AudioItem item = makeItem(*address);
    attachObservers(item.id);
    m_hasAudioSinceConnect = false;
    m_services.player.replaceCurrentItem(item);
    m_services.player.play();
    armConnectTimeout();
}

std::optional<QUrl> RadioPlayer::streamAddress() const
{
    const std::optional<Station> current = m_station;
    return m_usingAlternateStream ? current->alternateStreamURL() : current->streamURL();
}

AudioItem RadioPlayer::makeItem(const QUrl& url) const
{
    AudioItem item = makeAudioItem(url);
    item.headers = { { "User-Agent", "Velarin/1.0.1 (macOS; AVPlayer)" }, { "Icy-MetaData", "1" } };
    item.forwardBufferDuration = m_quality.preferredForwardBufferDuration();
    item.peakBitRate = m_quality.preferredPeakBitRate();
    item.kind = AudioItemKind::Live;
    return item;
}

void RadioPlayer::attachObservers(AudioItemId item)
{
    using Kind = PlaybackFailure::Kind;
    const auto inSession = [this, generation = m_generation](auto react) {
        return [this, generation, react](const auto&... what) {
            if (m_generation == generation)
                react(what...);
        };
    };
    AudioPlayer::ItemHandlers handlers;
    handlers.title = [this](const QString& text) { applyStreamTitle(text); };
    handlers.status = inSession([this](ItemStatus status, const AudioErrorChain& error) {
        if (status == ItemStatus::Failed)
            handleFailure(Kind::unknown, error);
    });
    handlers.failedToPlayToEnd =
        inSession([this](const AudioErrorChain& error) { handleFailure(Kind::network, error); });
    // A live stream has no end: one that ends is broken.
    handlers.playedToEnd = inSession([this] { handleFailure(Kind::network, {}); });
    handlers.stalled = inSession([this] { armStallWatchdog(); });
    handlers.httpStatus = inSession([this](int status) { httpStatusSeen(status); });
    m_itemObservations.push_back(m_services.player.observe(item, std::move(handlers)));
}

// After the first sound an answer is an episode of the stream's repair, and not the listener's business.
void RadioPlayer::httpStatusSeen(int status)
{
    if (m_wantsAudio && !m_hasAudioSinceConnect && status >= 400 && status <= 499)
        handleFailure(PlaybackFailure::Kind::notFound, {});
}

void RadioPlayer::armConnectTimeout()
{
    // The task before runs on: an attempt that the network's return cut short may still expire.
    m_connectTask.release();
    m_connectTask = laterWhileWanted(answerTimeout(), [this] {
        if (!m_hasAudioSinceConnect)
            handleFailure(PlaybackFailure::Kind::timeout, {});
    });
}

std::chrono::nanoseconds RadioPlayer::answerTimeout() const
{
    return Watchdogs::answerTimeout(m_services.repository.connectTimeoutSeconds(), m_quality);
}

}
