// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/SoundMemory.h"

#include <algorithm>

namespace velarin::live {

void SoundMemory::sounded(const QUrl& address, std::chrono::nanoseconds now)
{
    m_lastSound[address] = now;
    if (m_lastSound.size() <= capacity)
        return;
    const auto earlier = [](const auto& left, const auto& right) { return left.second < right.second; };
    m_lastSound.erase(std::min_element(m_lastSound.begin(), m_lastSound.end(), earlier));
}

bool SoundMemory::hasSounded(const QUrl& address, std::chrono::nanoseconds now) const
{
    const auto found = m_lastSound.find(address);
    return found != m_lastSound.end() && now - found->second <= span;
}

}
