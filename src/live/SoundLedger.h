// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Seconds.h"

namespace velarin::live {

// Keeps the seconds received and the seconds heard of one item on one line, although the one is counted from encoded
// frames and the other by the device: sound that a decoder drops, or that was miscounted, would otherwise be taken for
// sound in hand for ever.
class SoundLedger
{
public:
    void received(Seconds sound) { m_received += sound; }
    [[nodiscard]] Seconds received() const { return m_received; }

    // Received and not yet heard; never less than `waiting`, what is certainly still to be heard.
    [[nodiscard]] Seconds inHand(Seconds heard, Seconds waiting) const;
    // Where the device is, counted in sound received.
    [[nodiscard]] Seconds place(Seconds heard) const { return heard + m_offset; }
    // All that is left to be heard is `waiting`: what is missing was lost on the way.
    void settle(Seconds heard, Seconds waiting) { m_offset = m_received - waiting - heard; }

private:
    Seconds m_received{ 0.0 };
    // Sound received that was never to be heard (or the other way round).
    Seconds m_offset{ 0.0 };
};

}
