// SPDX-License-Identifier: GPL-3.0-or-later
// velarin-thousand-connects SERVER [COUNT]: the live engine asks the fault server at SERVER ("http://127.0.0.1:PORT") a
// thousand times, half of them in vain and each time for another reason, and prints as JSON what it holds of the
// machine after the fiftieth time and after the last. The server is another process, so that all that is counted is the
// engine's.
#include "live/LiveAudioPlayer.h"
#include "live/ProductionEngine.h"
#include "platform/gstreamer/output/DeviceSelection.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>

#include <array>
#include <cstdio>

namespace {

using namespace velarin;

constexpr int warmUp = 50;
// What is neither heard nor refused by then is given up, as a listener does who goes on to the next station.
constexpr qint64 patience = 500;
// For threads that are about to end.
constexpr int settling = 1500;

// The last two are no addresses of the server: nobody listens there, and no name is that.
constexpr std::array failures{ "/status/404", "/status/503", "/html", "/text", "/picture", "/empty", "/garbage",
    "/loop", "/silent", "/trickle/100?burst=0", "http://127.0.0.1:9/", "http://nowhere.invalid/" };

struct Holdings
{
    qint64 descriptors{ 0 };
    qint64 threads{ 0 };
    // Proportional, in KiB.
    qint64 memory{ 0 };
};

qint64 entriesOf(const char* folder)
{
    return QDir(QLatin1String(folder)).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

qint64 proportionalMemory()
{
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith("Pss:"))
            return line.mid(4).simplified().split(' ').first().toLongLong();
    return 0;
}

void turnLoop(qint64 milliseconds, const bool& done)
{
    QElapsedTimer time;
    time.start();
    while (!done && time.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
}

Holdings holdings()
{
    turnLoop(settling, false);
    return { entriesOf("/proc/self/fd"), entriesOf("/proc/self/task"), proportionalMemory() };
}

QJsonObject toJson(const Holdings& holdings)
{
    return { { QStringLiteral("descriptors"), holdings.descriptors }, { QStringLiteral("threads"), holdings.threads },
        { QStringLiteral("memory"), holdings.memory } };
}

// Every other time in vain.
QString addressOf(const QString& server, int number)
{
    if (number % 2 == 0)
        return server + QStringLiteral("/ok");
    const QString failure = QString::fromLatin1(failures.at(static_cast<size_t>(number / 2) % failures.size()));
    return failure.startsWith(u'/') ? server + failure : failure;
}

// Whether it came to sound.
bool connectOnce(AudioPlayer& player, const QString& address)
{
    const AudioItem item = makeAudioItem(QUrl(address));
    bool decided = false;
    bool heard = false;
    AudioPlayer::ItemHandlers handlers;
    handlers.status = [&](ItemStatus status, const AudioErrorChain&) {
        decided = decided || status == ItemStatus::Failed;
    };
    const AudioPlayer::Observation observation = player.observe(item.id, std::move(handlers));
    player.setTimeControlHandler([&](TimeControl control) {
        heard = control == TimeControl::Playing;
        decided = decided || heard;
    });
    player.replaceCurrentItem(item);
    player.play();
    turnLoop(patience, decided);
    player.replaceCurrentItem(std::nullopt);
    player.setTimeControlHandler({});
    return heard;
}

}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) {
        std::fputs("usage: velarin-thousand-connects SERVER [COUNT]\n", stderr);
        return 2;
    }
    const int count = arguments.size() > 2 ? arguments[2].toInt() : 1000;
    live::LiveAudioPlayer player([] { return live::startProductionEngine(std::make_shared<DeviceSelection>()); });
    QJsonObject figures;
    int heard = 0;
    for (int number = 0; number < count; ++number) {
        if (number == warmUp)
            figures[QStringLiteral("after50")] = toJson(holdings());
        heard += connectOnce(player, addressOf(arguments[1], number)) ? 1 : 0;
    }
    figures[QStringLiteral("afterAll")] = toJson(holdings());
    figures[QStringLiteral("connects")] = count;
    figures[QStringLiteral("heard")] = heard;
    std::printf("%s\n", QJsonDocument(figures).toJson(QJsonDocument::Compact).constData());
    return 0;
}
