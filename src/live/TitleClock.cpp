// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/TitleClock.h"

#include <algorithm>

namespace velarin::live {

void TitleClock::add(Seconds place, const QString& title)
{
    const auto later = std::find_if(
        m_waiting.begin(), m_waiting.end(), [place](const Waiting& waiting) { return waiting.place > place; });
    if (later != m_waiting.begin()) {
        Waiting& before = *std::prev(later);
        if (place - before.place < closest || before.title == title) {
            before.title = title;
            return;
        }
    }
    m_waiting.insert(later, Waiting{ place, title });
    if (m_waiting.size() > capacity)
        m_waiting.pop_front();
}

std::optional<QString> TitleClock::takeDue(Seconds heard)
{
    std::optional<QString> due;
    while (!m_waiting.empty() && m_waiting.front().place <= heard) {
        due = m_waiting.front().title;
        m_waiting.pop_front();
    }
    if (!due || due == m_told)
        return std::nullopt;
    m_told = due;
    return due;
}

std::optional<Seconds> TitleClock::next() const
{
    return m_waiting.empty() ? std::nullopt : std::optional(m_waiting.front().place);
}

}
