// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Task.h"
#include "catalogue/Station.h"
#include "catalogue/StationLists.h"
#include "catalogue/ThemeMode.h"

#include <QDateTime>
#include <QObject>
#include <QProperty>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace velarin {

class Broadcasts;
class Defaults;
class Executor;
class Files;

// The catalogue of stations, and the stored settings of the radio. Main thread only. The settings are valid from
// construction; every list is empty until the first load has finished.
class StationRepository : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList favorites READ favorites NOTIFY favoritesChanged BINDABLE bindableFavorites)
    Q_PROPERTY(QStringList recentIds READ recentIds NOTIFY recentIdsChanged BINDABLE bindableRecentIds)
    Q_PROPERTY(std::optional<QString> lastPlayedId READ lastPlayedId NOTIFY lastPlayedIdChanged)
    Q_PROPERTY(bool autoReconnect READ autoReconnect NOTIFY autoReconnectChanged BINDABLE bindableAutoReconnect)
    Q_PROPERTY(bool autoSkipUnreachable READ autoSkipUnreachable NOTIFY autoSkipUnreachableChanged)
    Q_PROPERTY(qint64 connectTimeoutSeconds READ connectTimeoutSeconds NOTIFY connectTimeoutSecondsChanged)
    Q_PROPERTY(velarin::ThemeMode themeMode READ themeMode NOTIFY themeModeChanged)
    Q_PROPERTY(std::optional<QDateTime> lastSyncDate READ lastSyncDate NOTIFY lastSyncDateChanged)
    Q_PROPERTY(bool carFavoritesOnly READ carFavoritesOnly NOTIFY carFavoritesOnlyChanged)
    Q_PROPERTY(bool autoPlayInCar READ autoPlayInCar NOTIFY autoPlayInCarChanged)
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY isLoadedChanged BINDABLE bindableIsLoaded)
    Q_PROPERTY(qint64 revision READ revision NOTIFY revisionChanged BINDABLE bindableRevision)

public:
    struct Sources
    {
        // The curated Italian file, a compiled-in resource.
        QString bundledItalian{ QStringLiteral(":/catalogue/stations.json") };
    };

    StationRepository(Sources sources, Files& files, Defaults& defaults, Executor& executor, Broadcasts& broadcasts);

    // Reads the sources, once, off the main thread; `done` is called when the catalogue is there, in a later turn.
    void ensureLoaded(std::function<void()> done);
    [[nodiscard]] bool isLoaded() const { return m_isLoaded; }
    [[nodiscard]] QBindable<bool> bindableIsLoaded() { return &m_isLoaded; }
    // Rises with every change of the lists, so that nobody compares lists.
    [[nodiscard]] qint64 revision() const { return m_revision; }
    [[nodiscard]] QBindable<qint64> bindableRevision() { return &m_revision; }

    [[nodiscard]] std::optional<Station> station(const QString& id) const;
    // Bundled ones first, then the most listened.
    [[nodiscard]] QList<Station> popular(qsizetype limit) const;
    // The Italian list, sorted by name.
    [[nodiscard]] const QList<Station>& sortedCache() const { return m_catalogue.italian; }
    [[nodiscard]] QList<Station> favoriteStations() const;
    [[nodiscard]] QList<Station> recentStations(qsizetype limit) const;
    // The neighbours of a station: the favourites, if it is one; the most listened; else the whole Italian list. Never
    // empty, since a station that is nowhere in them comes alone.
    [[nodiscard]] StationQueue queue(const Station& station) const;
    // The list to go on with when nothing is loaded; absent if no station is known.
    [[nodiscard]] std::optional<StationQueue> resumeQueue() const;

    // True if the id is a favourite now.
    bool toggleFavorite(const QString& id);
    [[nodiscard]] QStringList favorites() const { return m_favorites; }
    [[nodiscard]] QBindable<QStringList> bindableFavorites() { return &m_favorites; }

    void setLastPlayed(const QString& id);
    [[nodiscard]] std::optional<QString> lastPlayedId() const { return m_lastPlayedId; }
    // Newest first, at most 12.
    [[nodiscard]] QStringList recentIds() const { return m_recentIds; }
    [[nodiscard]] QBindable<QStringList> bindableRecentIds() { return &m_recentIds; }

    [[nodiscard]] bool autoReconnect() const { return m_autoReconnect; }
    [[nodiscard]] QBindable<bool> bindableAutoReconnect() { return &m_autoReconnect; }
    void setAutoReconnect(bool on);
    [[nodiscard]] bool autoSkipUnreachable() const { return m_autoSkipUnreachable; }
    void setAutoSkipUnreachable(bool on);
    // 5 to 12.
    [[nodiscard]] qint64 connectTimeoutSeconds() const { return m_connectTimeoutSeconds; }
    void setConnectTimeout(qint64 seconds);
    [[nodiscard]] ThemeMode themeMode() const { return m_themeMode; }
    void setThemeMode(ThemeMode mode);
    // The last successful sync with the directory.
    [[nodiscard]] std::optional<QDateTime> lastSyncDate() const { return m_lastSyncDate; }
    // Settings of a former program, kept readable; nothing obeys them.
    [[nodiscard]] bool carFavoritesOnly() const { return m_carFavoritesOnly; }
    [[nodiscard]] bool autoPlayInCar() const { return m_autoPlayInCar; }

Q_SIGNALS:
    void favoritesChanged();
    void recentIdsChanged();
    void lastPlayedIdChanged();
    void autoReconnectChanged();
    void autoSkipUnreachableChanged();
    void connectTimeoutSecondsChanged();
    void themeModeChanged();
    void lastSyncDateChanged();
    void carFavoritesOnlyChanged();
    void autoPlayInCarChanged();
    void isLoadedChanged();
    void revisionChanged();

private:
    void readSettings();
    void decode(const QByteArray& bundledItalian);
    void publish(StationLists::Catalogue catalogue);
    void finishLoading();
    [[nodiscard]] QList<Station> neighbours(const Station& station) const;

    const Sources m_sources;
    Files& m_files;
    Defaults& m_defaults;
    Executor& m_executor;
    Broadcasts& m_broadcasts;
    StationLists::Catalogue m_catalogue;
    // The first load, from its start on.
    Task m_loadTask;
    std::vector<std::function<void()>> m_waiting;

    Q_OBJECT_BINDABLE_PROPERTY(StationRepository, QStringList, m_favorites, &StationRepository::favoritesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StationRepository, QStringList, m_recentIds, &StationRepository::recentIdsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(
        StationRepository, std::optional<QString>, m_lastPlayedId, &StationRepository::lastPlayedIdChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(
        StationRepository, bool, m_autoReconnect, true, &StationRepository::autoReconnectChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(
        StationRepository, bool, m_autoSkipUnreachable, false, &StationRepository::autoSkipUnreachableChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(
        StationRepository, qint64, m_connectTimeoutSeconds, 8, &StationRepository::connectTimeoutSecondsChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(
        StationRepository, ThemeMode, m_themeMode, ThemeMode::system, &StationRepository::themeModeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(
        StationRepository, std::optional<QDateTime>, m_lastSyncDate, &StationRepository::lastSyncDateChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(
        StationRepository, bool, m_carFavoritesOnly, true, &StationRepository::carFavoritesOnlyChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(
        StationRepository, bool, m_autoPlayInCar, true, &StationRepository::autoPlayInCarChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(
        StationRepository, bool, m_isLoaded, false, &StationRepository::isLoadedChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(StationRepository, qint64, m_revision, 0, &StationRepository::revisionChanged)
};

}
