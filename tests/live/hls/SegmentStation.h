// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/hls/Segments.h"
#include "support/server/ScriptedServer.h"

#include <functional>
#include <map>
#include <optional>

namespace velarin::test {

// A station of real segments at a server of its own, on air since the server was made. Lists are "/NAME/list.m3u8" for
// each variant and "/master.m3u8", segments "/NAME/K".
class SegmentStation
{
public:
    struct Variant
    {
        const Segments* segments{ nullptr };
        int bandwidth{ 128000 };
    };
    struct Setup
    {
        std::map<QByteArray, Variant> variants;
        int window{ 6 };
        // Asked first; what it leaves is answered as all well. `time`: seconds on air.
        std::function<std::optional<Answer>(const ServerRequest& request, double time)> fault{};
        // The time that lists show, by the time on air.
        std::function<double(double)> listTime{ [](double time) { return time; } };
        // The number in the list of a segment, at a time.
        std::function<int(int segment, double time)> numbering{ [](int segment, double) { return segment; } };
        // Lines before a segment.
        std::function<QByteArray(int segment)> linesBefore{ [](int) { return QByteArray(); } };
        // What a segment becomes on its way.
        std::function<QByteArray(int segment, const QByteArray& bytes)> dress{ [](int, const QByteArray& bytes) {
            return bytes;
        } };
        std::optional<Certificate> certificate{};
    };
    // Of the programme, when the server begins.
    static constexpr double past = 20.0;

    explicit SegmentStation(Setup setup);

    [[nodiscard]] QByteArray url(const QByteArray& target) const { return m_server.url(target); }
    [[nodiscard]] const ScriptedServer& server() const { return m_server; }

private:
    [[nodiscard]] Answer answer(const ServerRequest& request) const;
    [[nodiscard]] QByteArray master() const;
    [[nodiscard]] QByteArray list(const QByteArray& name, double time) const;

    const Setup m_setup;
    ScriptedServer m_server;
};

}
