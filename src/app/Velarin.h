// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/AppDelegate.h"
#include "app/Paths.h"
#include "artwork/ArtworkLoader.h"
#include "base/Broadcasts.h"
#include "base/Executor.h"
#include "catalogue/StationRepository.h"
#include "coordination/AudioLevel.h"
#include "coordination/PlaybackCoordinator.h"
#include "diagnostics/Diagnostics.h"
#include "live/LiveAudioPlayer.h"
#include "platform/freedesktop/AutostartLoginItem.h"
#include "platform/freedesktop/LogindSleepMonitor.h"
#include "platform/freedesktop/MprisControls.h"
#include "platform/freedesktop/PortalAppearance.h"
#include "platform/gstreamer/output/DeviceSelection.h"
#include "platform/gstreamer/output/GstOutputDevices.h"
#include "platform/qt/BootClock.h"
#include "platform/qt/DiskFiles.h"
#include "platform/qt/JsonDefaults.h"
#include "platform/qt/QtNetworkMonitor.h"
#include "radio/RadioPlayer.h"
#include "screens/Screens.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

#include <memory>

namespace velarin {

// What the program is given from outside.
struct Surroundings
{
    // Not connected where there is none.
    QDBusConnection sessionBus;
    QDBusConnection systemBus;
    BaseFolders folders;
    // This program by its absolute path, then its arguments: what the desktop starts at login.
    QStringList command;
};

// The composition root: every long-lived object of the program, built once, in the order of start-up, each with what it
// needs. Main thread only.
class Velarin final : public QObject
{
    Q_OBJECT

public:
    explicit Velarin(Surroundings surroundings);
    ~Velarin() override;

    // Runs the start-up and opens the window; returns at once, the loading goes on.
    void start();
    // Brings the window to the front.
    void raise(const QString& activationToken);
    // Plays an address that somebody handed in; anything that is no web address is left alone.
    void open(const QString& address);
    // Ends the program in order; the event loop returns.
    void quit();
    // Stores what the next start has to know, and waits until it is on disk. At every orderly end, and at each one that
    // may not be the last: of a session that the user keeps after all.
    void terminate();

private:
    [[nodiscard]] MediaControls::ApplicationHandlers applicationHandlers();

    const Surroundings m_surroundings;

    // The world.
    PoolExecutor m_workers;
    BootClock m_clock;
    DiskFiles m_files;
    JsonDefaults m_defaults;
    // Nobody below may open a file before this is made: it takes over what former names left.
    const Paths m_paths;
    QtNetworkMonitor m_network;
    LogindSleepMonitor m_sleep;
    AutostartLoginItem m_loginItem;
    PortalAppearance m_appearance;
    MprisControls m_controls;
    const std::shared_ptr<DeviceSelection> m_selection;
    GstOutputDevices m_devices;
    live::LiveAudioPlayer m_livePlayer;

    // The logic.
    Broadcasts m_broadcasts;
    Diagnostics m_diagnostics;
    StationRepository m_stations;
    ArtworkLoader m_artwork;
    PlaybackCoordinator m_coordinator;
    RadioPlayer m_radio;
    AudioLevel m_level;

    // What is seen.
    Screens m_screens;
    AppDelegate m_delegate;
};

}
