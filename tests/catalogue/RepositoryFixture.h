// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Broadcasts.h"
#include "catalogue/StationRepository.h"
#include "support/FakeDefaults.h"
#include "support/FakeFiles.h"
#include "support/ManualExecutor.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <memory>

namespace velarin::test {

// A repository over a disk in memory; every broadcast is noted by name.
class RepositoryFixture : public testing::Test
{
protected:
    RepositoryFixture()
    {
        note(&Broadcasts::radioStationsDidChange, QStringLiteral("stations"));
        note(&Broadcasts::radioFavoritesDidChange, QStringLiteral("favorites"));
        note(&Broadcasts::radioSettingsDidChange, QStringLiteral("settings"));
        note(&Broadcasts::radioLibraryDidChange, QStringLiteral("library"));
    }

    static Station station(const QString& id, qint64 popularity = 0)
    {
        Station made;
        made.id = id;
        made.name = QStringLiteral("Radio ") + id;
        made.streamUrl = QStringLiteral("http://host/") + id;
        made.popularity = popularity;
        return made;
    }

    static QStringList ids(const QList<Station>& stations)
    {
        QStringList result;
        for (const Station& each : stations)
            result.append(each.id);
        return result;
    }

    void bundle(const QList<Station>& stations)
    {
        files.contents[StationRepository::Sources().bundledItalian] = encodeStations(stations);
    }

    std::unique_ptr<StationRepository> make()
    {
        return std::make_unique<StationRepository>(StationRepository::Sources(), files, defaults, executor, broadcasts);
    }

    // Lets a load that was asked for come to its end.
    void finishLoad()
    {
        files.deliverReads();
        executor.runAll();
    }

    std::unique_ptr<StationRepository> loaded(const QList<Station>& bundled)
    {
        bundle(bundled);
        auto repository = make();
        repository->ensureLoaded([] {});
        finishLoad();
        return repository;
    }

    FakeFiles files;
    FakeDefaults defaults;
    ManualExecutor executor;
    Broadcasts broadcasts;
    QStringList posted;

private:
    void note(void (Broadcasts::*signal)(), const QString& name)
    {
        QObject::connect(&broadcasts, signal, &broadcasts, [this, name] { posted.append(name); });
    }
};

}
