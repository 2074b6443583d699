// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/Station.h"
#include "coordination/PlaybackEngine.h"
#include "radio/PlaybackState.h"
#include "radio/StreamQuality.h"

#include <QImage>
#include <QObject>
#include <QProperty>

#include <optional>

namespace velarin {

class AlarmSession;
class ArtworkLoader;
class AudioPlayer;
class Broadcasts;
class Clock;
class Diagnostics;
class MediaControls;
class NetworkMonitor;
class PlaybackCoordinator;
class SleepMonitor;
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

// The engine for live streams.
class RadioPlayer : public QObject, public PlaybackEngine
{
    Q_OBJECT

public:
    explicit RadioPlayer(RadioPlayerServices services);
    ~RadioPlayer() override;

    void play(
        const Station& station, const std::optional<QList<Station>>& queue = std::nullopt, bool keepSkipCount = false);
    // Starts the station anew, whatever the state.
    void start(const Station& station);
    void resumeLast();
    void resume() override;
    void pause() override;
    void togglePlayback() override;
    void stop() override;
    void next() override;
    void previous() override;

    bool isPlaying() const override;
    bool isSounding() const override;
    qsizetype queueSize() const override;
    QString heartbeatText() const override;
    void setVolume(float volume) override;

    [[nodiscard]] PlaybackState state() const;
    [[nodiscard]] std::optional<Station> station() const;
    [[nodiscard]] QList<Station> queue() const;
    [[nodiscard]] qint64 queueIndex() const;
    [[nodiscard]] std::optional<QString> songTitle() const;
    [[nodiscard]] std::optional<QString> songArtist() const;
    // Null where there is none yet.
    [[nodiscard]] QImage artwork() const;
    [[nodiscard]] StreamQuality quality() const;

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
};

}
