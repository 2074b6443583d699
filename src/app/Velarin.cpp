// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Velarin.h"

#include "app/ApplicationInfo.h"
#include "app/Migration.h"
#include "live/ProductionEngine.h"
#include "radio/PreviewStation.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace velarin {

namespace {

// Enough for a few files and pictures at a time; none of them computes for long.
constexpr int workerThreads = 3;

}

Velarin::Velarin(Surroundings surroundings)
    : m_surroundings(std::move(surroundings))
    , m_workers(workerThreads)
    , m_files(m_workers)
    , m_defaults(m_files, m_surroundings.folders.config + QStringLiteral("/com.brenholt.velarin.json"))
    , m_paths(migrate(m_surroundings.folders, m_files, m_defaults))
    , m_network(m_surroundings.systemBus)
    , m_sleep(m_surroundings.systemBus)
    , m_loginItem(AutostartLoginItem::userEntryPath(), m_surroundings.command)
    , m_appearance(m_surroundings.sessionBus, [] { return QGuiApplication::palette(); })
    , m_controls(m_surroundings.sessionBus, m_clock, m_workers, MprisControls::userArtworkFolder())
    , m_selection(std::make_shared<DeviceSelection>())
    , m_devices(m_selection)
    , m_livePlayer([selection = m_selection] { return live::startProductionEngine(selection); })
    , m_diagnostics(
          m_paths.support + QStringLiteral("/diagnostics.json"), applicationInfo(), m_files, m_defaults, m_clock)
    , m_stations({}, m_files, m_defaults, m_workers, m_broadcasts)
    , m_artwork(m_workers)
    , m_coordinator(m_controls, m_diagnostics, m_defaults)
    , m_radio({ m_stations, m_livePlayer, m_coordinator, m_controls, m_diagnostics, m_artwork, m_network, m_sleep,
          m_clock, m_broadcasts })
    , m_level(m_defaults, m_coordinator, m_controls)
    , m_screens(
          { m_stations, m_radio, m_coordinator, m_level, m_broadcasts, m_devices, m_appearance, m_defaults, m_clock })
    , m_delegate({ m_diagnostics, m_loginItem, m_defaults, m_stations, m_level,
          // The window opens with its colours: it waits for what the desktop wishes where the user leaves it to it.
          [this](ThemeMode) { m_screens.show(); }, [this] { raise({}); } })
{
    m_coordinator.attach(PlaybackCoordinator::Source::radio, m_radio);
    // A key may come before the stations are there.
    m_coordinator.setResumeLast([this] { m_stations.ensureLoaded([this] { m_radio.resumeLast(); }); });
    m_controls.setApplicationHandlers(applicationHandlers());
    m_sleep.setShutDownHandler([this] { quit(); });
    connect(&m_screens, &Screens::quitRequested, this, &Velarin::quit);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &Velarin::terminate);
    // The end of the session: what must be on disk is there before the desktop goes on, whether or not it asks again.
    connect(qApp, &QGuiApplication::commitDataRequest, this, &Velarin::terminate);
}

Velarin::~Velarin() = default;

void Velarin::start()
{
    QGuiApplication::setQuitOnLastWindowClosed(m_delegate.applicationShouldTerminateAfterLastWindowClosed());
    m_delegate.applicationDidFinishLaunching();
}

void Velarin::raise(const QString& activationToken)
{
    m_screens.raise(activationToken);
}

void Velarin::open(const QString& address)
{
    if (const auto station = previewStation(address))
        m_radio.play(*station);
}

MediaControls::ApplicationHandlers Velarin::applicationHandlers()
{
    return {
        .raise = [this] { raise({}); },
        .quit = [this] { quit(); },
        .openUri = [this](const QString& address) { open(address); },
        .setVolume = [this](double volume) { m_level.setUser(static_cast<float>(std::clamp(volume, 0.0, 1.0))); },
    };
}

void Velarin::quit()
{
    // Not quit(): that asks every window first, and ours answers a close by hiding.
    QCoreApplication::exit(0);
}

void Velarin::terminate()
{
    m_screens.storeState();
    m_delegate.applicationWillTerminate();
    m_diagnostics.saveNow();
    m_files.flush();
}

}
