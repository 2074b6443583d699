// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/Station.h"

#include <QHash>
#include <QList>

#include <optional>

namespace velarin {

// A list to walk through with next and previous, and the place in it.
struct StationQueue
{
    QList<Station> stations;
    qint64 index{ 0 };
    bool operator==(const StationQueue&) const = default;
};

// How the catalogue's lists are made of its sources: functions of their arguments alone, for any thread.
namespace StationLists {

// Everything that is made anew when a source changes.
struct Catalogue
{
    // Sorted by name.
    QList<Station> italian;
    // Every known station; the first of equal ids.
    QHash<QString, Station> byId;
};

[[nodiscard]] Catalogue catalogueOf(const QList<Station>& bundledItalian);

// The stations of a file of the application, in its order: marked as bundled, and with a weight above that of any
// station that is not.
[[nodiscard]] QList<Station> mergedItalian(QList<Station> bundled);
// The first station of each catalogue key, in their order.
[[nodiscard]] QList<Station> deduplicated(const QList<Station>& stations);
// By the lower-cased name; stations of one name keep their order.
[[nodiscard]] QList<Station> sortedByName(const QList<Station>& stations);
// Bundled ones first, then the most listened; at most `limit`, which is not negative.
[[nodiscard]] QList<Station> popular(const QList<Station>& stations, qsizetype limit);

// The first place of the id in the list.
[[nodiscard]] std::optional<qsizetype> indexOf(const QList<Station>& stations, const QString& id);
// The queue of the list, at the station of this id, or at the first one.
[[nodiscard]] StationQueue queueAt(const QList<Station>& stations, const QString& id);

}

}
