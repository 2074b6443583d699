// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/StationRepository.h"

#include "base/Broadcasts.h"
#include "base/Executor.h"
#include "platform/Files.h"

namespace velarin {

namespace {

constexpr qint64 maxBundledBytes = 8LL * 1024 * 1024;

// How many of the most listened stations make a queue.
constexpr qsizetype queueLimit = 50;

}

StationRepository::StationRepository(
    Sources sources, Files& files, Defaults& defaults, Executor& executor, Broadcasts& broadcasts)
    : m_sources(std::move(sources))
    , m_files(files)
    , m_defaults(defaults)
    , m_executor(executor)
    , m_broadcasts(broadcasts)
{
    readSettings();
}

void StationRepository::ensureLoaded(std::function<void()> done)
{
    if (m_isLoaded) {
        QMetaObject::invokeMethod(this, std::move(done), Qt::QueuedConnection);
        return;
    }
    m_waiting.push_back(std::move(done));
    if (m_loadTask)
        return;
    m_loadTask = m_files.read(m_sources.bundledItalian, maxBundledBytes,
        [this](const std::optional<QByteArray>& bytes) { decode(bytes.value_or(QByteArray())); });
}

void StationRepository::decode(const QByteArray& bundledItalian)
{
    m_loadTask = runOn(
        m_executor,
        [bundledItalian] {
            return StationLists::catalogueOf(decodeStations(bundledItalian).value_or(QList<Station>()));
        },
        [this](StationLists::Catalogue catalogue) {
            publish(std::move(catalogue));
            finishLoading();
        });
}

void StationRepository::publish(StationLists::Catalogue catalogue)
{
    m_catalogue = std::move(catalogue);
    m_revision = m_revision + 1;
    Q_EMIT m_broadcasts.radioStationsDidChange();
}

void StationRepository::finishLoading()
{
    m_isLoaded = true;
    const auto waiting = std::exchange(m_waiting, {});
    for (const auto& done : waiting)
        done();
}

std::optional<Station> StationRepository::station(const QString& id) const
{
    const auto found = m_catalogue.byId.constFind(id);
    return found == m_catalogue.byId.constEnd() ? std::nullopt : std::optional(*found);
}

QList<Station> StationRepository::popular(qsizetype limit) const
{
    return StationLists::popular(m_catalogue.italian, limit);
}

QList<Station> StationRepository::favoriteStations() const
{
    QList<Station> stations;
    for (const QString& id : favorites()) {
        if (const auto known = station(id))
            stations.append(*known);
    }
    return StationLists::sortedByName(stations);
}

QList<Station> StationRepository::recentStations(qsizetype limit) const
{
    QList<Station> stations;
    for (const QString& id : recentIds()) {
        if (stations.size() >= limit)
            break;
        if (const auto known = station(id))
            stations.append(*known);
    }
    return stations;
}

QList<Station> StationRepository::neighbours(const Station& station) const
{
    QList<Station> favorites = favoriteStations();
    if (StationLists::indexOf(favorites, station.id))
        return favorites;
    // A foreign station's neighbours are those of its country, never Italian ones.
    if (station.isWorld())
        return {};
    QList<Station> mostListened = popular(queueLimit);
    return StationLists::indexOf(mostListened, station.id) ? mostListened : sortedCache();
}

StationQueue StationRepository::queue(const Station& station) const
{
    const QList<Station> stations = neighbours(station);
    if (stations.isEmpty())
        return { { station }, 0 };
    return StationLists::queueAt(stations, station.id);
}

std::optional<StationQueue> StationRepository::resumeQueue() const
{
    QList<Station> stations = favoriteStations();
    if (stations.isEmpty())
        stations = popular(queueLimit);
    const QString lastId = lastPlayedId().value_or(QString());
    const auto last = station(lastId);
    if (last && !StationLists::indexOf(stations, lastId))
        stations.prepend(*last);
    if (stations.isEmpty())
        return std::nullopt;
    return StationLists::queueAt(stations, lastId);
}

}
