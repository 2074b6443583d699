// SPDX-License-Identifier: GPL-3.0-or-later
#include "coordination/AudioLevel.h"

#include "coordination/PlaybackCoordinator.h"
#include "coordination/PlaybackEngine.h"
#include "platform/Defaults.h"
#include "platform/MediaControls.h"

#include <algorithm>
#include <cmath>

namespace velarin {

namespace {

const QString outputVolumeKey = QStringLiteral("output_volume");

float clamped(float level)
{
    return std::clamp(level, 0.0F, 1.0F);
}

float storedLevel(const Defaults& defaults)
{
    // Clamped before it is narrowed: a real number may lie outside of what a float can hold.
    return static_cast<float>(std::clamp(defaults.real(outputVolumeKey).value_or(1.0), 0.0, 1.0));
}

}

AudioLevel::AudioLevel(Defaults& defaults, PlaybackCoordinator& coordinator, MediaControls& controls)
    : m_defaults(defaults)
    , m_coordinator(coordinator)
    , m_controls(controls)
{
    m_user = storedLevel(defaults);
    m_controls.publishVolume(m_user);
}

void AudioLevel::setUser(float level)
{
    // Whatever a caller of the media controls sends arrives here.
    if (std::isnan(level) || clamped(level) == m_user)
        return;
    m_user = clamped(level);
    m_defaults.setReal(outputVolumeKey, m_user);
    m_controls.publishVolume(m_user);
    apply();
}

void AudioLevel::setFade(float share)
{
    if (std::isnan(share) || clamped(share) == m_fade)
        return;
    m_fade = clamped(share);
    apply();
}

void AudioLevel::apply()
{
    using Source = PlaybackCoordinator::Source;
    for (const Source source : { Source::radio, Source::podcast, Source::music }) {
        if (PlaybackEngine* engine = m_coordinator.engine(source))
            engine->setVolume(clamped(m_user * m_fade));
    }
}

}
