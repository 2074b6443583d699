// SPDX-License-Identifier: GPL-3.0-or-later
// velarin-hear-player: lets a player play from a server that misbehaves and prints as JSON what was heard of it, with
// "requestToSound", the seconds from the player's first request to its first sound. One server, one ear, one player, so
// that nothing of one measurement is left for the next.
#include "support/ears/Ear.h"
#include "support/server/Scenarios.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <cstdio>

using namespace velarin::test;

namespace {

constexpr unsigned long tickMilliseconds = 10;
// What no device adds by itself.
constexpr float audible = 0.01F;

struct OnAir
{
    std::shared_ptr<const StationProgramme> programme;
    QByteArray type;
};

// FILE,TYPE,BYTESPERSECOND; nothing on air without one.
OnAir onAir(const QString& text)
{
    const QStringList parts = text.split(u',');
    QFile file(parts.value(0));
    if (parts.size() != 3 || !file.open(QIODevice::ReadOnly))
        return {};
    return { std::make_shared<StationProgramme>(file.readAll(), parts[2].toDouble()), parts[1].toUtf8() };
}

void start(QProcess& player, QStringList command, const QByteArray& address)
{
    for (QString& word : command)
        word.replace(QLatin1String("@ADDRESS@"), QString::fromLatin1(address));
    player.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    player.setStandardOutputFile(QProcess::nullDevice());
    player.start(command.takeFirst(), command);
}

bool hasSound(const Ear& ear)
{
    const std::vector<float> samples = ear.recording();
    return std::ranges::any_of(samples, [](float sample) { return std::abs(sample) > audible; });
}

void listen(const Ear& ear, Scenarios& scenarios, double seconds, bool untilSound)
{
    const double end = ear.now() + seconds;
    for (int tick = 0; ear.now() < end; ++tick) {
        scenarios.tick();
        QThread::msleep(tickMilliseconds);
        if (untilSound && tick % 10 == 0 && hasSound(ear))
            return;
    }
}

// Null where nothing was asked for or heard.
QJsonValue requestToSound(const EarReport& report, const ScriptedServer& server, double startOfServer)
{
    const std::vector<ServerRequest> requests = server.requests();
    if (requests.empty() || !report.firstSound)
        return {};
    return *report.firstSound - (startOfServer + requests.front().time.count());
}

}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const auto option = [](const char* name, const char* text, const char* value) {
        return QCommandLineOption(
            QString::fromLatin1(name), QString::fromLatin1(text), value ? QString::fromLatin1(value) : QString());
    };
    parser.addOptions({ option("device", "what of PULSE_SERVER is listened to", "NAME"),
        option("seconds", "for how long at the most", "SECONDS"), option("until-sound", "no longer", nullptr),
        option("path", "what is asked of the server", "PATH"),
        option("programme", "what is on air", "FILE,TYPE,BYTESPERSECOND"),
        option("second", "what /codec changes to", "FILE,TYPE,BYTESPERSECOND") });
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("the player; @ADDRESS@ is what it plays"));
    parser.process(application);
    const OnAir first = onAir(parser.value(QStringLiteral("programme")));
    const OnAir second = onAir(parser.value(QStringLiteral("second")));
    if (!first.programme || parser.positionalArguments().isEmpty())
        parser.showHelp(2);

    const QString device = parser.value(QStringLiteral("device"));
    const Ear ear(qEnvironmentVariable("PULSE_SERVER"), device);
    if (!ear.isListening()) {
        std::fputs("velarin-hear-player: the device cannot be heard\n", stderr);
        return 1;
    }
    Scenarios scenarios(first.programme, first.type, second.programme, second.type);
    ScriptedServer server(scenarios.script());
    scenarios.serveIn(server);
    qputenv("PULSE_SINK", device.toUtf8());
    QProcess player;
    start(player, parser.positionalArguments(), server.url(parser.value(QStringLiteral("path")).toLatin1()));
    listen(ear, scenarios, parser.value(QStringLiteral("seconds")).toDouble(),
        parser.isSet(QStringLiteral("until-sound")));

    const double startOfServer = ear.now() - server.now().count();
    const EarReport report = ear.report();
    QJsonObject figures = report.toJson();
    figures[QStringLiteral("requestToSound")] = requestToSound(report, server, startOfServer);
    figures[QStringLiteral("requests")] = static_cast<qint64>(server.requests().size());
    player.kill();
    player.waitForFinished();
    std::printf("%s\n", QJsonDocument(figures).toJson(QJsonDocument::Compact).constData());
    return 0;
}
