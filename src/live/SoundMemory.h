// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QUrl>

#include <chrono>
#include <map>

namespace velarin::live {

// Which addresses gave sound of late, over all items of a player. Bounded: the oldest are forgotten.
class SoundMemory
{
public:
    static constexpr std::chrono::minutes span{ 10 };
    static constexpr std::size_t capacity = 64;

    void sounded(const QUrl& address, std::chrono::nanoseconds now);
    [[nodiscard]] bool hasSounded(const QUrl& address, std::chrono::nanoseconds now) const;

private:
    std::map<QUrl, std::chrono::nanoseconds> m_lastSound;
};

}
