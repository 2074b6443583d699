// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/ears/SideBySide.h"

#include <QJsonDocument>

#include <algorithm>

namespace velarin::test {

namespace {

struct Seat
{
    Seat(const Hearing& what, int device)
        : hearing(what)
        , station(what.codec)
        , listening(device)
    {
    }

    const Hearing& hearing;
    Station station;
    Listening listening;
};

}

std::map<std::string, Heard> hearSideBySide(const std::vector<Hearing>& hearings)
{
    std::map<std::string, Heard> results;
    for (std::size_t first = 0; first < hearings.size(); first += SoundServer::deviceCount) {
        std::vector<std::unique_ptr<Seat>> seats;
        const std::size_t end = std::min(hearings.size(), first + SoundServer::deviceCount);
        double longest = 0.0;
        for (std::size_t index = first; index < end; ++index) {
            seats.push_back(std::make_unique<Seat>(hearings[index], static_cast<int>(index - first)));
            longest = std::max(longest, hearings[index].seconds);
        }
        for (const auto& seat : seats)
            seat->listening.play(seat->station.url(seat->hearing.target), seat->hearing.forwardBuffer);
        listenFor(longest);
        for (const auto& seat : seats)
            results[seat->hearing.name] = { seat->listening.heard(), seat->listening.events,
                seat->station.server().requests() };
    }
    return results;
}

std::vector<std::string> namesOf(const std::vector<Hearing>& hearings)
{
    std::vector<std::string> names;
    for (const Hearing& hearing : hearings)
        names.push_back(hearing.name);
    return names;
}

std::string inFigures(const Heard& heard)
{
    std::string text = QJsonDocument(heard.report.toJson()).toJson(QJsonDocument::Compact).toStdString();
    text += "\nevents: " + heard.events.join(QStringLiteral(", ")).toStdString() + "\nrequests:";
    for (const ServerRequest& request : heard.requests)
        text += " " + std::to_string(request.time.count()) + request.target.toStdString();
    return text;
}

}
