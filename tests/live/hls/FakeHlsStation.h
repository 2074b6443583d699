// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/session/FakeConnections.h"
#include "live/session/FakeLoop.h"
#include "live/session/TestSound.h"

#include <functional>
#include <map>
#include <optional>
#include <set>

namespace velarin::live::test {

// A station that gives numbered frames of sound in segments, in virtual time, and misbehaves as it is told. Its lists
// are "/master" and "/NAME/list" for each variant, its segments "/NAME/K", K counting from 0 as the programme does.
class FakeHlsStation
{
public:
    static constexpr int framesEach = 150;
    static constexpr double segmentSeconds = framesEach * frameSeconds;
    // Of the programme, before the station is first asked.
    static constexpr double past = 100.0;

    struct Reply
    {
        // 200: the body, and a clean end.
        int status{ 200 };
        QByteArray body{};
        // Before anything comes.
        double delay{ 0.01 };
        // Nothing ever comes.
        bool isSilent{ false };
        // Bytes a second; absent: all at once.
        std::optional<double> pace{};
        // The connection breaks after so many bytes.
        std::optional<qsizetype> breaksAfter{};
        QByteArray contentType{ "audio/mpeg" };
    };
    using Script = std::function<std::optional<Reply>(const QString& path, const StreamRequest& request)>;

    FakeHlsStation(FakeLoop& loop, FakeConnections& connections);

    [[nodiscard]] static QUrl address(const QString& path);
    [[nodiscard]] static QByteArray segment(int number)
    {
        return frames(number * framesEach, (number + 1) * framesEach);
    }
    // Seconds since the station went on air, and the segments that are complete by now.
    [[nodiscard]] double now() const;
    [[nodiscard]] int complete() const { return static_cast<int>((now() + past) / segmentSeconds); }
    // A list of the segments from `from` up to `to`, as a variant of this name would give it.
    [[nodiscard]] QByteArray list(int from, int to, const QString& variant = QStringLiteral("a")) const;
    // How often a path was asked for.
    [[nodiscard]] int asked(const QString& path) const;

    // Asked first; what it leaves is answered as all well.
    Script script;
    int window{ 6 };
    // The lists show the station as it was then, between these times.
    double stuckFrom{ 1e9 };
    double stuckUntil{ 1e9 };
    std::set<int> missing;
    std::set<int> discontinuities;
    // Numbers in the list, in place of the programme's own.
    std::function<qint64(int segment)> numbering{ [](int segment) { return segment; } };
    // Lines before the address of a segment.
    std::function<QByteArray(int segment)> linesBefore{ [](int) { return QByteArray(); } };
    // No more than so many segments there are, and the list says so.
    std::optional<int> last;
    // Bits per second by name.
    std::map<QString, int> variants{ { QStringLiteral("a"), 128000 } };
    std::vector<QString> requests;

private:
    struct Transfer
    {
        std::shared_ptr<FakeConnection> connection;
        Reply reply;
        double begun{ 0.0 };
        qsizetype sent{ 0 };
        bool isOver{ false };
    };

    void tick();
    void accept();
    void serve(Transfer& transfer);
    [[nodiscard]] Reply reply(const QString& path) const;
    [[nodiscard]] QByteArray master() const;
    [[nodiscard]] QByteArray currentList(const QString& variant) const;

    FakeLoop& m_loop;
    FakeConnections& m_connections;
    const std::chrono::nanoseconds m_start;
    std::size_t m_accepted{ 0 };
    std::vector<Transfer> m_transfers;
    Task m_tick;
};

}
