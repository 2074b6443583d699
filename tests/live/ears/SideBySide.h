// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/ears/Listening.h"
#include "live/ears/Station.h"

#include <map>
#include <string>
#include <vector>

namespace velarin::test {

// What is to be listened to.
struct Hearing
{
    std::string name;
    QByteArray target;
    Codec codec{ Codec::Mp3 };
    double seconds{ 4.0 };
    double forwardBuffer{ 0.0 };
};

struct Heard
{
    EarReport report;
    QStringList events;
    std::vector<ServerRequest> requests;
};

// Listens to all of them, four at a time, each with its own server, device and engine.
[[nodiscard]] std::map<std::string, Heard> hearSideBySide(const std::vector<Hearing>& hearings);

// Test names made of those of the hearings.
[[nodiscard]] std::vector<std::string> namesOf(const std::vector<Hearing>& hearings);

// For the messages of a test that failed.
[[nodiscard]] std::string inFigures(const Heard& heard);

}
