// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

namespace velarin {

// Brings sound to a volume, and from one volume to the next along a straight line: a step would be heard as a click.
class VolumeRamp
{
public:
    // Frames from silence to full volume.
    explicit VolumeRamp(int framesOfRamp);

    // Interleaved stereo, changed in place; `target` is a linear factor.
    void apply(std::span<float> samples, float target);

private:
    float m_step;
    float m_current{ -1.0F };
};

}
