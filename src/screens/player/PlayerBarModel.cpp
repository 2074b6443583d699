// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/player/PlayerBarModel.h"

#include "base/Broadcasts.h"
#include "catalogue/StationRepository.h"
#include "coordination/AudioLevel.h"
#include "coordination/Transport.h"
#include "radio/RadioPlayer.h"

namespace velarin {

PlayerBarModel::PlayerBarModel(PlaybackServices services, std::function<void(const QImage&)> showPicture)
    : m_services(services)
    , m_showPicture(std::move(showPicture))
{
    const auto update = &PlayerBarModel::updateFace;
    connect(&services.coordinator, &PlaybackCoordinator::activeChanged, this, update);
    connect(&services.coordinator, &PlaybackCoordinator::activeChanged, this, &PlayerBarModel::updatePicture);
    connect(&services.radio, &RadioPlayer::stateChanged, this, update);
    connect(&services.radio, &RadioPlayer::stationChanged, this, update);
    connect(&services.radio, &RadioPlayer::queueChanged, this, update);
    connect(&services.radio, &RadioPlayer::songTitleChanged, this, update);
    connect(&services.radio, &RadioPlayer::songArtistChanged, this, update);
    connect(&services.radio, &RadioPlayer::artworkChanged, this, &PlayerBarModel::updatePicture);
    connect(&services.repository, &StationRepository::favoritesChanged, this, update);
    connect(&services.level, &AudioLevel::userChanged, this, update);
    connect(&services.level, &AudioLevel::userChanged, this, &PlayerBarModel::volumeChanged);
    updateFace();
    updatePicture();
}

double PlayerBarModel::volume() const
{
    return static_cast<double>(m_services.level.user());
}

void PlayerBarModel::setVolume(double volume)
{
    m_services.level.setUser(static_cast<float>(volume));
}

void PlayerBarModel::toggleFavorite()
{
    if (const auto station = m_services.radio.station())
        m_services.repository.toggleFavorite(station->id);
}

void PlayerBarModel::retry()
{
    if (const auto station = m_services.radio.station())
        m_services.radio.start(*station);
}

void PlayerBarModel::toggleMute()
{
    m_services.level.setUser(m_services.level.user() > 0.0F ? 0.0F : 1.0F);
}

void PlayerBarModel::openFullPlayer()
{
    Q_EMIT m_services.broadcasts.radioToggleFullPlayer();
}

BarFacts PlayerBarModel::facts() const
{
    const RadioPlayer& radio = m_services.radio;
    BarFacts facts;
    facts.active = m_services.coordinator.active();
    facts.radio = radio.state();
    facts.hasStation = radio.station().has_value();
    facts.radioTitle = radio.displayTitle();
    facts.radioSubtitle = radio.displaySubtitle();
    facts.favorite = radio.isFavorite();
    facts.canSkip = Transport::canSkip(m_services.coordinator);
    facts.playing = Transport::isPlaying(m_services.coordinator);
    facts.volume = m_services.level.user();
    return facts;
}

void PlayerBarModel::updateFace()
{
    BarFace face = barFace(facts());
    if (face == m_face)
        return;
    m_face = std::move(face);
    Q_EMIT faceChanged();
}

void PlayerBarModel::updatePicture()
{
    const bool radio = m_services.coordinator.active() == PlaybackCoordinator::Source::radio;
    const QImage picture = radio ? m_services.radio.artwork() : QImage();
    m_showPicture(picture);
    const int number = picture.isNull() ? 0 : ++m_picturesShown;
    if (number == m_pictureNumber)
        return;
    m_pictureNumber = number;
    Q_EMIT pictureNumberChanged();
}

}
