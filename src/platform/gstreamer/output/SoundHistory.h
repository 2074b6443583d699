// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

namespace velarin {

// The last frames that went to a device, so that those it was lost with can be played on another.
class SoundHistory
{
public:
    explicit SoundHistory(qint64 framesKept);

    void append(std::span<const float> samples);
    // Frames appended since the start.
    [[nodiscard]] qint64 end() const { return m_end; }
    // The samples from this frame on, as far back as is kept.
    [[nodiscard]] std::vector<float> from(qint64 frame) const;

private:
    std::vector<float> m_ring;
    qint64 m_capacity;
    qint64 m_end{ 0 };
};

}
