// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/SoundHistory.h"

#include "platform/gstreamer/output/SoundDevice.h"

#include <algorithm>

namespace velarin {

SoundHistory::SoundHistory(qint64 framesKept)
    : m_ring(static_cast<std::size_t>(framesKept * soundChannels))
    , m_capacity(framesKept)
{
}

void SoundHistory::append(std::span<const float> samples)
{
    while (!samples.empty()) {
        const qint64 place = m_end % m_capacity;
        const auto frames = std::min<qint64>(m_capacity - place, static_cast<qint64>(samples.size()) / soundChannels);
        const auto count = static_cast<std::size_t>(frames * soundChannels);
        std::copy_n(samples.begin(), count, m_ring.begin() + place * soundChannels);
        samples = samples.subspan(count);
        m_end += frames;
    }
}

std::vector<float> SoundHistory::from(qint64 frame) const
{
    std::vector<float> samples;
    for (qint64 at = std::max({ frame, m_end - m_capacity, qint64{ 0 } }); at < m_end; ++at)
        for (int channel = 0; channel < soundChannels; ++channel)
            samples.push_back(m_ring[static_cast<std::size_t>((at % m_capacity) * soundChannels + channel)]);
    return samples;
}

}
