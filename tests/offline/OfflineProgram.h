// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "artwork/ArtworkLoader.h"
#include "base/Broadcasts.h"
#include "base/Executor.h"
#include "catalogue/StationRepository.h"
#include "coordination/AudioLevel.h"
#include "coordination/PlaybackCoordinator.h"
#include "diagnostics/Diagnostics.h"
#include "offline/OfflinePlayer.h"
#include "platform/qt/BootClock.h"
#include "radio/RadioPlayer.h"
#include "screens/Screens.h"
#include "support/FakeAppearance.h"
#include "support/FakeDefaults.h"
#include "support/FakeFiles.h"
#include "support/FakeMediaControls.h"
#include "support/FakeNetworkMonitor.h"
#include "support/FakeOutputDevices.h"
#include "support/FakeSleepMonitor.h"

namespace velarin::test {

// The whole program on fakes: no network, no sound card, no disk, no bus; the catalogue is the one that is compiled in.
// Every long-lived object once, in the order of start-up.
struct OfflineProgram
{
    OfflineProgram(StationsBehaviour behaviour, ColorScheme scheme);

    void start();

    BootClock clock;
    PoolExecutor executor{ 2 };
    FakeFiles files;
    FakeDefaults defaults;
    FakeMediaControls mediaControls;
    FakeNetworkMonitor network;
    FakeSleepMonitor sleep;
    FakeAppearance appearance;
    FakeOutputDevices devices;
    OfflinePlayer player;
    Broadcasts broadcasts;
    Diagnostics diagnostics;
    StationRepository repository;
    PlaybackCoordinator coordinator;
    ArtworkLoader artwork;
    RadioPlayer radio;
    AudioLevel level;
    Screens screens;
};

}
