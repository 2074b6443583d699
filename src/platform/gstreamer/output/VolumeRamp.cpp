// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/VolumeRamp.h"

#include "platform/gstreamer/output/SoundDevice.h"

#include <algorithm>

namespace velarin {

VolumeRamp::VolumeRamp(int framesOfRamp)
    : m_step(1.0F / static_cast<float>(std::max(1, framesOfRamp)))
{
}

void VolumeRamp::apply(std::span<float> samples, float target)
{
    // The first sound starts at its volume.
    if (m_current < 0.0F)
        m_current = target;
    if (m_current == 1.0F && target == 1.0F)
        return;
    for (std::size_t frame = 0; frame + soundChannels <= samples.size(); frame += soundChannels) {
        m_current += std::clamp(target - m_current, -m_step, m_step);
        samples[frame] *= m_current;
        samples[frame + 1] *= m_current;
    }
}

}
