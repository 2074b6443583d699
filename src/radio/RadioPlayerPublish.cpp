// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/RadioPlayer.h"

#include "artwork/ArtworkLoader.h"
#include "base/Broadcasts.h"
#include "catalogue/StationRepository.h"
#include "coordination/PlaybackCoordinator.h"
#include "platform/MediaControls.h"
#include "radio/RadioNowPlaying.h"
#include "radio/StatusLine.h"

namespace velarin {

QString RadioPlayer::displayTitle() const
{
    const std::optional<Station> current = m_station;
    if (const std::optional<QString> song = m_songTitle)
        return *song;
    return current ? current->name : QStringLiteral("Velarin");
}

QString RadioPlayer::displaySubtitle() const
{
    const std::optional<Station> current = m_station;
    return is<Playing>(m_state) && songTitle() && current ? current->name : statusLine();
}

QString RadioPlayer::statusLine() const
{
    return velarin::statusLine(m_state);
}

bool RadioPlayer::isFavorite() const
{
    const std::optional<Station> current = m_station;
    return current && m_services.repository.favorites().contains(current->id);
}

QString RadioPlayer::heartbeatText() const
{
    const QString sound = isPlaying() ? QStringLiteral("suona") : QStringLiteral("ferma");
    const QString quality = m_quality.tier > 0 ? QStringLiteral(" · ") + m_quality.label() : QString();
    return QStringLiteral("Radio · %1 · %2%3").arg(stationName(), sound, quality);
}

void RadioPlayer::setState(const PlaybackState& state)
{
    m_state = state;
    publish();
}

void RadioPlayer::publish()
{
    publishNowPlaying();
    announce();
}

void RadioPlayer::announce()
{
    Q_EMIT m_services.broadcasts.radioPlaybackDidChange();
}

void RadioPlayer::publishNowPlaying()
{
    // The display belongs to the engine that has the output.
    if (m_services.coordinator.active() != PlaybackCoordinator::Source::radio)
        return;
    m_services.coordinator.refreshCommands();
    const std::optional<Station> current = m_station;
    if (!current) {
        m_services.mediaControls.publish(std::nullopt, NowPlayingState::Stopped);
        return;
    }
    const RadioDisplay display{ *current, m_state, m_songTitle, m_songArtist, queueSize(), m_queueIndex, m_artwork };
    m_services.mediaControls.publish(radioNowPlaying(display), radioNowPlayingState(m_state));
}

void RadioPlayer::loadArtwork(const Station& station)
{
    m_artworkTask.cancel();
    m_artwork = QImage();
    m_artworkTask = m_services.artwork.image(station, [this, id = station.id](const QImage& image) {
        if (!m_station.value() || m_station.value()->id != id)
            return;
        m_artwork = image;
        publish();
    });
}

}
