// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Seconds.h"

#include <QString>

#include <deque>
#include <optional>

namespace velarin::live {

// Titles that wait for their sound. A title's place is counted in seconds of the item's sound; a title that says what
// the one before it said is no news.
class TitleClock
{
public:
    // Bounds what a server can make us keep: titles closer together than this replace each other.
    static constexpr Seconds closest{ 0.25 };
    static constexpr std::size_t capacity = 256;

    void add(Seconds place, const QString& title);
    // The latest title whose place has been heard, once, unless it was told last.
    [[nodiscard]] std::optional<QString> takeDue(Seconds heard);
    // Place of the title that is due next.
    [[nodiscard]] std::optional<Seconds> next() const;

private:
    struct Waiting
    {
        Seconds place{ 0.0 };
        QString title;
    };
    std::deque<Waiting> m_waiting;
    std::optional<QString> m_told;
};

}
