// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/server/ScriptedServer.h"

#include <atomic>
#include <functional>
#include <map>
#include <thread>

namespace velarin::test {

// A script in which the path says what goes wrong, for programs that know no more of the server than its address. Times
// are seconds since the path was first asked for; from its second request on a path is well unless something else is
// said.
//
//   /ok                       all well
//   /close/T  /reset/T        the connection ends
//   /stall/T  /stall/T/S      silence, for ever or for S seconds
//   /restart/T/S/HOW          gone after T, for S seconds, HOW being a status or "refuse"
//   /codec/T                  ends after T; then it is the second programme
//   /token/T                  leads to an address that ends after T and is 404 then
//   /slow/F  /trickle/N       F times the pace; N bytes a second
//   /head/S  /silent          the head comes after S seconds; nothing ever comes
//   /status/N                 a status without a body
//   /html /text /picture /empty /garbage          bodies that are no sound, with 200
//   /redirect/N  /loop  /m3u  /pls                ways to /ok, N being the status
//   /lie                      an interval is announced and not kept
//   /nohead                   sound without a head
//
// Options, as a query: burst=KB, metaint=N, protocol=ICY or HTTP/1.0, chunked=1, type=MEDIA/TYPE, every=1 (the fault
// comes on each connection), pls and m3u and redirect lead to to=PATH (with its slash).
class Scenarios
{
public:
    // The second programme is that of /codec.
    Scenarios(std::shared_ptr<const StationProgramme> programme, QByteArray contentType,
        std::shared_ptr<const StationProgramme> second = nullptr, QByteArray secondType = {});

    // Serves in `server`, which is made with script() and outlives what it does at certain times.
    [[nodiscard]] Script script();
    void serveIn(ScriptedServer& server) { m_server = &server; }
    // To be called now and then: ends what has had its time, and refuses while it has to. Any thread, one at a time.
    void tick();

private:
    using Words = QList<QByteArray>;

    [[nodiscard]] Answer answer(const ServerRequest& request);
    [[nodiscard]] Answer wellAnswer(const ServerRequest& request) const;
    [[nodiscard]] Answer faultyAnswer(const ServerRequest& request, const Words& words);
    [[nodiscard]] std::optional<Answer> wayElsewhere(const ServerRequest& request, const Words& words) const;
    [[nodiscard]] static std::optional<Answer> mute(const Words& words);
    [[nodiscard]] Answer afterRestart(const ServerRequest& request, const Words& words);
    [[nodiscard]] Answer withToken(const ServerRequest& request, const Words& words);

    struct Restart
    {
        Seconds from{ 0 };
        Seconds to{ 0 };
        bool refuses{ false };
        bool hasClosed{ false };
    };

    std::shared_ptr<const StationProgramme> m_programme;
    QByteArray m_contentType;
    std::shared_ptr<const StationProgramme> m_second;
    QByteArray m_secondType;
    ScriptedServer* m_server{ nullptr };
    // When a path was first asked for.
    std::map<QByteArray, Seconds> m_firstTimes;

    // Protected by m_mutex: written by the script, read by tick().
    std::mutex m_mutex;
    std::vector<Restart> m_restarts;
};

}
