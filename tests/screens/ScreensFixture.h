// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "artwork/ArtworkLoader.h"
#include "base/Broadcasts.h"
#include "catalogue/StationRepository.h"
#include "coordination/AudioLevel.h"
#include "coordination/PlaybackCoordinator.h"
#include "diagnostics/Diagnostics.h"
#include "radio/RadioPlayer.h"
#include "screens/parts/PlaybackServices.h"
#include "support/FakeAppearance.h"
#include "support/FakeAudioPlayer.h"
#include "support/FakeClock.h"
#include "support/FakeDefaults.h"
#include "support/FakeFiles.h"
#include "support/FakeMediaControls.h"
#include "support/FakeNetworkMonitor.h"
#include "support/FakeSleepMonitor.h"
#include "support/ManualExecutor.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

namespace velarin::test {

// The real radio and the real catalogue under the view models, on fakes and in virtual time.
class ScreensFixture : public testing::Test
{
protected:
    ScreensFixture()
    {
        coordinator.attach(PlaybackCoordinator::Source::radio, radio);
        coordinator.setResumeLast([this] { radio.resumeLast(); });
    }

    static Station stationNamed(const QString& name)
    {
        Station station;
        station.id = name.toLower();
        station.name = name;
        station.streamUrl = QStringLiteral("http://127.0.0.1:9/%1").arg(QString(name).remove(u' '));
        station.genre = QStringLiteral("Pop");
        station.bundled = true;
        return station;
    }

    void load(const QList<Station>& stations)
    {
        files.contents.insert(QStringLiteral("catalogue"), encodeStations(stations));
        repository.ensureLoaded([] {});
        for (int turn = 0; turn < 3; ++turn) {
            files.deliverReads();
            executor.runAll();
            QCoreApplication::processEvents();
        }
    }

    void sound()
    {
        player.tellStatus(ItemStatus::Ready);
        player.tellLikelyToKeepUp();
        player.tellTimeControl(TimeControl::Playing);
    }

    PlaybackServices services() { return { repository, radio, coordinator, level, broadcasts }; }

    FakeClock clock;
    ManualExecutor executor;
    FakeFiles files;
    FakeDefaults defaults;
    FakeMediaControls mediaControls;
    FakeNetworkMonitor network;
    FakeSleepMonitor sleep;
    FakeAudioPlayer player;
    Broadcasts broadcasts;
    Diagnostics diagnostics{ QStringLiteral("diagnostics.json"), {}, files, defaults, clock };
    StationRepository repository{ { QStringLiteral("catalogue") }, files, defaults, executor, broadcasts };
    PlaybackCoordinator coordinator{ mediaControls, diagnostics, defaults };
    ArtworkLoader artwork{ executor };
    RadioPlayer radio{ { repository, player, coordinator, mediaControls, diagnostics, artwork, network, sleep, clock,
        broadcasts } };
    AudioLevel level{ defaults, coordinator, mediaControls };
};

}
