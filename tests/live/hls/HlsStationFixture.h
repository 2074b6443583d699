// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/hls/FakeHlsStation.h"
#include "live/session/LivePlayerFixture.h"

#include <set>

namespace velarin::live::test {

// The whole engine at a station of segments, in virtual time.
class HlsStationTest : public LivePlayerTest
{
protected:
    // Chooses the station at this path, and lets it sound for so long.
    void listen(const QString& path, std::chrono::nanoseconds duration, qint64 peakBitRate = 0)
    {
        AudioItem item = makeAudioItem(FakeHlsStation::address(path));
        item.peakBitRate = peakBitRate;
        observe(item.id);
        player->replaceCurrentItem(item);
        player->play();
        advance(duration);
    }

    // Seconds of silence since the first sound, counted by what the pipeline has decoded.
    [[nodiscard]] double heard() const { return m_engine->m_pipelines.last->heardSeconds(); }
    // The segments that were played whole, in order.
    [[nodiscard]] std::vector<int> segmentsPlayed() const
    {
        std::map<int, int> count;
        std::vector<int> order;
        for (const int number : played()) {
            const int segment = number / FakeHlsStation::framesEach;
            if (++count[segment] == 1)
                order.push_back(segment);
        }
        std::erase_if(order, [&count](int segment) { return count[segment] < FakeHlsStation::framesEach; });
        return order;
    }
    // Each frame follows the one before it.
    [[nodiscard]] bool isPlayedWithoutABreak() const
    {
        const std::vector<int> numbers = played();
        return !numbers.empty() && breaksIn(numbers, numbers.front()).empty();
    }
    [[nodiscard]] std::size_t stretches() const { return m_engine->m_pipelines.log.branches.size(); }

    FakeHlsStation station{ m_engine->m_loop, m_engine->m_connections };
};

}
