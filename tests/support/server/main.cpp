// SPDX-License-Identifier: GPL-3.0-or-later
// The server of the tests as a program, for scripts and benchmarks: prints its port, and then each request as it comes
// ("seconds path"); ends when its standard input does.
#include "support/server/Scenarios.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <poll.h>
#include <unistd.h>

#include <cstdio>

using namespace velarin::test;

namespace {

constexpr int tickMilliseconds = 20;

// FILE,TYPE,BYTESPERSECOND; null without one.
std::shared_ptr<const StationProgramme> programmeOf(const QStringList& parts)
{
    QFile file(parts.value(0));
    if (parts.size() != 3 || !file.open(QIODevice::ReadOnly))
        return nullptr;
    return std::make_shared<StationProgramme>(file.readAll(), parts[2].toDouble());
}

bool inputHasEnded()
{
    pollfd input{ STDIN_FILENO, POLLIN, 0 };
    char byte = 0;
    return poll(&input, 1, tickMilliseconds) > 0 && read(STDIN_FILENO, &byte, 1) <= 0;
}

size_t printRequests(const ScriptedServer& server, size_t printed)
{
    const std::vector<ServerRequest> requests = server.requests();
    for (size_t index = printed; index < requests.size(); ++index)
        std::printf("%.3f %s\n", requests[index].time.count(), requests[index].target.constData());
    std::fflush(stdout);
    return requests.size();
}

}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions(
        { { QStringLiteral("programme"), QStringLiteral("what is on air"), QStringLiteral("FILE,TYPE,BYTESPERSECOND") },
            { QStringLiteral("second"), QStringLiteral("what /codec changes to"),
                QStringLiteral("FILE,TYPE,BYTESPERSECOND") } });
    parser.process(application);
    const QStringList first = parser.value(QStringLiteral("programme")).split(u',');
    const QStringList second = parser.value(QStringLiteral("second")).split(u',');
    const std::shared_ptr<const StationProgramme> programme = programmeOf(first);
    if (!programme)
        parser.showHelp(1);

    Scenarios scenarios(programme, first[1].toUtf8(), programmeOf(second), second.value(1).toUtf8());
    ScriptedServer server(scenarios.script());
    scenarios.serveIn(server);
    std::printf("%d\n", server.port());
    for (size_t printed = 0; !inputHasEnded();) {
        scenarios.tick();
        printed = printRequests(server, printed);
    }
    return 0;
}
