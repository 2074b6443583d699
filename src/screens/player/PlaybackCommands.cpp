// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/player/PlaybackCommands.h"

#include "base/Broadcasts.h"
#include "catalogue/StationRepository.h"
#include "coordination/AudioLevel.h"
#include "coordination/PlaybackCoordinator.h"
#include "coordination/PlaybackEngine.h"
#include "coordination/Transport.h"
#include "radio/RadioPlayer.h"

#include <algorithm>

namespace velarin {

namespace {

constexpr float volumeStep = 0.06F;

}

PlaybackCommands::PlaybackCommands(PlaybackServices services)
    : m_services(services)
{
}

void PlaybackCommands::toggle()
{
    Transport::toggle(m_services.coordinator);
}

void PlaybackCommands::next()
{
    if (PlaybackEngine* engine = m_services.coordinator.activeEngine())
        engine->next();
}

void PlaybackCommands::previous()
{
    if (PlaybackEngine* engine = m_services.coordinator.activeEngine())
        engine->previous();
}

void PlaybackCommands::toggleFavorite()
{
    const auto station = m_services.radio.station();
    if (!station)
        return;
    m_services.repository.toggleFavorite(station->id);
    Q_EMIT m_services.broadcasts.radioPlaybackDidChange();
}

void PlaybackCommands::louder()
{
    changeVolume(volumeStep);
}

void PlaybackCommands::quieter()
{
    changeVolume(-volumeStep);
}

void PlaybackCommands::changeVolume(float step)
{
    m_services.level.setUser(std::clamp(m_services.level.user() + step, 0.0F, 1.0F));
}

}
