// SPDX-License-Identifier: GPL-3.0-or-later
#include "offline/OfflineProgram.h"

#include <QFile>
#include <QTimer>

namespace velarin::test {

namespace {

const auto catalogue = QStringLiteral(":/catalogue/stations.json");

QByteArray compiledIn(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}

OfflineProgram::OfflineProgram(StationsBehaviour behaviour, ColorScheme scheme)
    : player(clock, behaviour)
    , diagnostics(QStringLiteral("/offline/diagnostics.json"), {}, files, defaults, clock)
    , repository({ catalogue }, files, defaults, executor, broadcasts)
    , coordinator(mediaControls, diagnostics, defaults)
    , artwork(executor)
    , radio({ repository, player, coordinator, mediaControls, diagnostics, artwork, network, sleep, clock, broadcasts })
    , level(defaults, coordinator, mediaControls)
    , screens({ repository, radio, coordinator, level, broadcasts, devices, appearance, defaults, clock })
{
    appearance.wishes.scheme = scheme;
    files.contents.insert(catalogue, compiledIn(catalogue));
    coordinator.attach(PlaybackCoordinator::Source::radio, radio);
    coordinator.setResumeLast([this] { radio.resumeLast(); });
}

void OfflineProgram::start()
{
    level.apply();
    screens.show();
    repository.ensureLoaded([] {});
    // The window comes first here too.
    QTimer::singleShot(0, &repository, [this] { files.deliverReads(); });
}

}
