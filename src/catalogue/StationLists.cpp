// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/StationLists.h"

#include "base/TextFolding.h"

#include <QSet>

#include <algorithm>
#include <limits>
#include <vector>

namespace velarin::StationLists {

namespace {

// More than any station of a directory has listeners.
constexpr qint64 bundledBonus = 100'000;

qint64 withBonus(qint64 popularity)
{
    return std::min(popularity, std::numeric_limits<qint64>::max() - bundledBonus) + bundledBonus;
}

QHash<QString, Station> indexedById(const QList<Station>& stations)
{
    QHash<QString, Station> byId;
    byId.reserve(stations.size());
    for (const Station& station : stations) {
        if (!byId.contains(station.id))
            byId.insert(station.id, station);
    }
    return byId;
}

}

Catalogue catalogueOf(const QList<Station>& bundledItalian)
{
    Catalogue catalogue;
    catalogue.italian = sortedByName(mergedItalian(bundledItalian));
    catalogue.byId = indexedById(catalogue.italian);
    return catalogue;
}

QList<Station> mergedItalian(QList<Station> bundled)
{
    for (Station& station : bundled) {
        station.bundled = true;
        station.popularity = withBonus(station.popularity);
    }
    return deduplicated(bundled);
}

QList<Station> deduplicated(const QList<Station>& stations)
{
    QSet<QString> keys;
    QList<Station> result;
    for (const Station& station : stations) {
        const auto before = keys.size();
        keys.insert(catalogueKey(station));
        if (keys.size() > before)
            result.append(station);
    }
    return result;
}

QList<Station> sortedByName(const QList<Station>& stations)
{
    struct Entry
    {
        QString key;
        const Station* station{ nullptr };
    };
    std::vector<Entry> entries;
    entries.reserve(static_cast<std::size_t>(stations.size()));
    for (const Station& station : stations)
        entries.push_back({ lowerCased(station.name), &station });
    std::stable_sort(entries.begin(), entries.end(),
        [](const Entry& left, const Entry& right) { return codePointLess(left.key, right.key); });

    QList<Station> result;
    result.reserve(stations.size());
    for (const Entry& entry : entries)
        result.append(*entry.station);
    return result;
}

QList<Station> popular(const QList<Station>& stations, qsizetype limit)
{
    Q_ASSERT(limit >= 0);
    std::vector<const Station*> ranked;
    ranked.reserve(static_cast<std::size_t>(stations.size()));
    for (const Station& station : stations)
        ranked.push_back(&station);
    std::stable_sort(ranked.begin(), ranked.end(), [](const Station* left, const Station* right) {
        return left->bundled != right->bundled ? left->bundled : left->popularity > right->popularity;
    });

    QList<Station> result;
    for (const Station* station : ranked) {
        if (result.size() == limit)
            break;
        result.append(*station);
    }
    return result;
}

std::optional<qsizetype> indexOf(const QList<Station>& stations, const QString& id)
{
    const auto found =
        std::find_if(stations.begin(), stations.end(), [&id](const Station& station) { return station.id == id; });
    return found == stations.end() ? std::nullopt : std::optional(found - stations.begin());
}

StationQueue queueAt(const QList<Station>& stations, const QString& id)
{
    return { stations, indexOf(stations, id).value_or(0) };
}

}
