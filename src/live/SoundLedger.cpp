// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/SoundLedger.h"

#include <algorithm>

namespace velarin::live {

Seconds SoundLedger::inHand(Seconds heard, Seconds waiting) const
{
    return std::max(m_received - place(heard), waiting);
}

}
