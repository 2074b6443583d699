// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Task.h"
#include "catalogue/Station.h"
#include "coordination/PlaybackEngine.h"
#include "platform/AudioPlayer.h"
#include "platform/SleepMonitor.h"
#include "radio/FailurePlan.h"
#include "radio/PlaybackState.h"
#include "radio/StreamQuality.h"

#include <QImage>
#include <QObject>
#include <QProperty>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace velarin {

class AlarmSession;
class ArtworkLoader;
class Broadcasts;
class Clock;
class Diagnostics;
class MediaControls;
class NetworkMonitor;
class PlaybackCoordinator;
class StationRepository;

// What the radio needs of the rest; everything outlives it.
struct RadioPlayerServices
{
    StationRepository& repository;
    AudioPlayer& player;
    PlaybackCoordinator& coordinator;
    MediaControls& mediaControls;
    Diagnostics& diagnostics;
    ArtworkLoader& artwork;
    NetworkMonitor& network;
    SleepMonitor& sleep;
    Clock& clock;
    Broadcasts& broadcasts;
    // Null while there is nobody who rings.
    AlarmSession* alarms{ nullptr };
};

// The engine for live streams: it keeps one station sounding, whatever happens to the stream, the network and the
// machine. Main thread only; no call waits.
//
// A session is one wish for one station, from start() to the next start(). It is made of attempts; each attempt is an
// item of the audio player with observers and timers of its own. Whatever comes back later (a timer, an event of an
// item) carries the generation of its session and does nothing in another one.
class RadioPlayer : public QObject, public PlaybackEngine
{
    Q_OBJECT
    Q_PROPERTY(velarin::PlaybackState state READ state NOTIFY stateChanged BINDABLE bindableState)
    Q_PROPERTY(std::optional<velarin::Station> station READ station NOTIFY stationChanged BINDABLE bindableStation)
    Q_PROPERTY(QList<velarin::Station> queue READ queue NOTIFY queueChanged BINDABLE bindableQueue)
    Q_PROPERTY(qint64 queueIndex READ queueIndex NOTIFY queueIndexChanged BINDABLE bindableQueueIndex)
    Q_PROPERTY(std::optional<QString> songTitle READ songTitle NOTIFY songTitleChanged BINDABLE bindableSongTitle)
    Q_PROPERTY(std::optional<QString> songArtist READ songArtist NOTIFY songArtistChanged BINDABLE bindableSongArtist)
    Q_PROPERTY(QImage artwork READ artwork NOTIFY artworkChanged BINDABLE bindableArtwork)

public:
    // Wires the media keys, and listens to the player, the network and the machine's sleep from here on.
    explicit RadioPlayer(RadioPlayerServices services);
    ~RadioPlayer() override;

    // Takes the sound output and starts the station. Next and previous walk through `queue`, or through the station's
    // neighbours in the catalogue; a station that is not in the list gets a list of its own. `keepSkipCount` is for
    // the automatic skip alone.
    void play(
        const Station& station, const std::optional<QList<Station>>& queue = std::nullopt, bool keepSkipCount = false);
    // Starts the station anew, whatever the state. Does not take the output.
    void start(const Station& station);
    // Starts the station of the last run, with its neighbours; nothing if none is known. Does not take the output.
    void resumeLast();
    // Goes on in place after a pause of less than 20 seconds, else at the live edge.
    void resume() override;
    void pause() override;
    void togglePlayback() override;
    // Silence, with nothing loaded; station and queue stay.
    void stop() override;
    // Around the queue; nothing if it has no other station.
    void next() override;
    void previous() override;

    bool isPlaying() const override;
    bool isSounding() const override;
    qsizetype queueSize() const override;
    QString heartbeatText() const override;
    void setVolume(float volume) override;

    [[nodiscard]] PlaybackState state() const { return m_state; }
    [[nodiscard]] QBindable<PlaybackState> bindableState() const { return &m_state; }
    // Kept after stop().
    [[nodiscard]] std::optional<Station> station() const { return m_station; }
    [[nodiscard]] QBindable<std::optional<Station>> bindableStation() const { return &m_station; }
    [[nodiscard]] QList<Station> queue() const { return m_queue; }
    [[nodiscard]] QBindable<QList<Station>> bindableQueue() const { return &m_queue; }
    [[nodiscard]] qint64 queueIndex() const { return m_queueIndex; }
    [[nodiscard]] QBindable<qint64> bindableQueueIndex() const { return &m_queueIndex; }
    // As the stream announces it.
    [[nodiscard]] std::optional<QString> songTitle() const { return m_songTitle; }
    [[nodiscard]] QBindable<std::optional<QString>> bindableSongTitle() const { return &m_songTitle; }
    [[nodiscard]] std::optional<QString> songArtist() const { return m_songArtist; }
    [[nodiscard]] QBindable<std::optional<QString>> bindableSongArtist() const { return &m_songArtist; }
    // Null where there is none yet.
    [[nodiscard]] QImage artwork() const { return m_artwork; }
    [[nodiscard]] QBindable<QImage> bindableArtwork() const { return &m_artwork; }
    // Not stored; another station does not raise it.
    [[nodiscard]] StreamQuality quality() const { return m_quality; }

    [[nodiscard]] QString displayTitle() const;
    [[nodiscard]] QString displaySubtitle() const;
    [[nodiscard]] QString statusLine() const;
    [[nodiscard]] bool isFavorite() const;

Q_SIGNALS:
    void stateChanged();
    void stationChanged();
    void queueChanged();
    void queueIndexChanged();
    void songTitleChanged();
    void songArtistChanged();
    void artworkChanged();

private:
    // RadioPlayer.cpp
    void setQueue(const QList<Station>& stations, const Station& station);
    void step(qint64 places);
    void resumeInPlace();
    [[nodiscard]] bool canResumeInPlace() const;
    void endAlarm(const QString& reason);
    void invalidateTimers();
    void detachItemObservers();
    [[nodiscard]] QString stationName() const;
    [[nodiscard]] Task later(std::chrono::nanoseconds delay, std::function<void()> wake);
    [[nodiscard]] Task laterInSession(std::chrono::nanoseconds delay, std::function<void()> wake);
    [[nodiscard]] Task laterWhileWanted(std::chrono::nanoseconds delay, std::function<void()> wake);

    // RadioPlayerConnect.cpp
    void connectStream(qint64 attempt);
    [[nodiscard]] std::optional<QUrl> streamAddress() const;
    [[nodiscard]] AudioItem makeItem(const QUrl& url) const;
    void attachObservers(AudioItemId item);
    void httpStatusSeen(int status);
    void armConnectTimeout();
    [[nodiscard]] std::chrono::nanoseconds answerTimeout() const;

    // RadioPlayerFailure.cpp
    void handleFailure(PlaybackFailure::Kind hint, const AudioErrorChain& error);
    void giveUp(PlaybackFailure::Kind kind);
    void skipUnreachable();
    void retryAfter(std::chrono::nanoseconds delay, qint64 attempt);
    void armPatientRetry(std::chrono::seconds delay);
    void carryOut(const FailurePlan& plan, PlaybackFailure::Kind kind);
    void carryOut(const WaitForNetwork& wait, PlaybackFailure::Kind kind);
    void carryOut(const SwitchToAlternate& plan, PlaybackFailure::Kind kind);
    void carryOut(const SkipToNext& plan, PlaybackFailure::Kind kind);
    void carryOut(const RetrySoon& retry, PlaybackFailure::Kind kind);
    void carryOut(const RetryPatiently& retry, PlaybackFailure::Kind kind);
    void carryOut(const StopForGood& plan, PlaybackFailure::Kind kind);
    QString endRun(PlaybackFailure::Kind kind);
    [[nodiscard]] FailureFacts failureFacts(PlaybackFailure::Kind kind) const;

    // RadioPlayerWatchdogs.cpp
    void timeControlChanged(TimeControl control);
    void soundStarted();
    void soundRanDry();
    void soundStoppedByItself();
    void armStallWatchdog(std::optional<std::chrono::nanoseconds> after = std::nullopt);
    void armProgressWatchdog();
    void scheduleProgressCheck();
    void checkProgress();

    // RadioPlayerQuality.cpp
    void lowerQuality();
    void armQualityRestore();
    void restoreQuality();

    // RadioPlayerNetwork.cpp
    void startNetworkMonitor();
    void networkChanged(bool online);
    void observeSystemSleep();
    void systemWillSleep(SleepMonitor::SleepDelay delay);
    void systemDidWake();

    // RadioPlayerTitle.cpp
    void applyStreamTitle(const QString& text);
    void showSong(const std::optional<QString>& artist, const std::optional<QString>& title);

    // RadioPlayerPublish.cpp
    void setState(const PlaybackState& state);
    void publish();
    void announce();
    void publishNowPlaying();
    void loadArtwork(const Station& station);

    const RadioPlayerServices m_services;

    // The present session.
    qint64 m_generation{ 0 };
    // The user wants sound now; every way back to it asks this first.
    bool m_wantsAudio{ false };
    bool m_usingAlternateStream{ false };
    bool m_hasAudioSinceConnect{ false };
    std::optional<std::chrono::nanoseconds> m_pausedAt;
    // Failed attempts, and given-up runs of attempts, since the last sound.
    qint64 m_failures{ 0 };
    qint64 m_patientRetries{ 0 };
    // Across sessions.
    qint64 m_skipsInARow{ 0 };
    StreamQuality m_quality;
    // Seconds on the player's clock at the last look.
    double m_lastProgress{ 0.0 };

    // The world outside.
    bool m_isOnline{ true };
    bool m_resumeWhenOnline{ false };
    bool m_playingBeforeSleep{ false };
    SleepMonitor::SleepDelay m_sleepDelay;
    Task m_sleepDelayLimit;

    // One slot a purpose.
    Task m_connectTask;
    Task m_stallTask;
    Task m_retryTask;
    Task m_progressTask;
    Task m_restoreTask;
    Task m_artworkTask;
    // Of the present item; for a moment also of the one before it, when the network came back during an attempt.
    std::vector<AudioPlayer::Observation> m_itemObservations;

    Q_OBJECT_BINDABLE_PROPERTY(RadioPlayer, PlaybackState, m_state, &RadioPlayer::stateChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RadioPlayer, std::optional<Station>, m_station, &RadioPlayer::stationChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RadioPlayer, QList<Station>, m_queue, &RadioPlayer::queueChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(RadioPlayer, qint64, m_queueIndex, 0, &RadioPlayer::queueIndexChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RadioPlayer, std::optional<QString>, m_songTitle, &RadioPlayer::songTitleChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RadioPlayer, std::optional<QString>, m_songArtist, &RadioPlayer::songArtistChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RadioPlayer, QImage, m_artwork, &RadioPlayer::artworkChanged)
};

}
