// SPDX-License-Identifier: GPL-3.0-or-later
// velarin-play-station ADDRESS: the radio of the program (its live engine, its failure plan, its watchdogs) without its
// windows, playing one address on the sound server of PULSE_SERVER and PULSE_SINK until it is ended. With
// VELARIN_BENCH_LOG set it writes what a user would find in the diagnostics to its standard error.
#include "artwork/ArtworkLoader.h"
#include "base/Broadcasts.h"
#include "catalogue/StationRepository.h"
#include "coordination/PlaybackCoordinator.h"
#include "diagnostics/DiagnosticEventText.h"
#include "diagnostics/Diagnostics.h"
#include "live/LiveAudioPlayer.h"
#include "live/ProductionEngine.h"
#include "platform/gstreamer/output/DeviceSelection.h"
#include "platform/qt/BootClock.h"
#include "radio/PreviewStation.h"
#include "radio/RadioPlayer.h"
#include "support/FakeDefaults.h"
#include "support/FakeFiles.h"
#include "support/FakeMediaControls.h"
#include "support/FakeNetworkMonitor.h"
#include "support/FakeSleepMonitor.h"
#include "support/ManualExecutor.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

using namespace velarin;

// The radio on real time, a real network and a real device; nothing is written, and no picture is drawn.
struct Radio
{
    BootClock clock;
    test::FakeDefaults defaults;
    test::FakeFiles files;
    test::ManualExecutor workers;
    Broadcasts broadcasts;
    test::FakeMediaControls controls;
    test::FakeNetworkMonitor network;
    test::FakeSleepMonitor sleep;
    live::LiveAudioPlayer player{ [] { return live::startProductionEngine(std::make_shared<DeviceSelection>()); } };
    Diagnostics diagnostics{ QStringLiteral("/diagnostics.json"), ApplicationInfo{}, files, defaults, clock };
    StationRepository repository{ {}, files, defaults, workers, broadcasts };
    PlaybackCoordinator coordinator{ controls, diagnostics, defaults };
    ArtworkLoader artwork{ workers };
    RadioPlayer radio{ { repository, player, coordinator, controls, diagnostics, artwork, network, sleep, clock,
        broadcasts } };
};

void printNews(const Diagnostics& diagnostics, qsizetype& printed)
{
    const auto events = diagnostics.events();
    for (; printed < static_cast<qsizetype>(events.size()); ++printed) {
        const DiagnosticEvent& event = events[printed];
        std::fprintf(stderr, "%s %s: %s\n", qPrintable(event.date.time().toString(QStringLiteral("hh:mm:ss.zzz"))),
            qPrintable(toText(event.category)), qPrintable(event.message));
    }
}

}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const auto station = previewStation(QCoreApplication::arguments().value(1));
    if (!station) {
        std::fputs("usage: velarin-play-station ADDRESS\n", stderr);
        return 2;
    }
    Radio radio;
    radio.coordinator.attach(PlaybackCoordinator::Source::radio, radio.radio);
    qsizetype printed = 0;
    if (qEnvironmentVariableIsSet("VELARIN_BENCH_LOG"))
        QObject::connect(
            &radio.radio, &RadioPlayer::stateChanged, &radio.radio, [&] { printNews(radio.diagnostics, printed); },
            Qt::QueuedConnection);
    radio.radio.play(*station);
    return QCoreApplication::exec();
}
