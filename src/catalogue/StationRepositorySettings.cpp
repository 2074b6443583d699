// SPDX-License-Identifier: GPL-3.0-or-later
// The stored values of the repository: what the user chose and what was played.
#include "base/Broadcasts.h"
#include "catalogue/StationRepository.h"
#include "platform/Defaults.h"

#include <algorithm>

namespace velarin {

namespace {

const QString favoritesKey = QStringLiteral("favorites");
const QString recentStationsKey = QStringLiteral("recent_stations");
const QString lastStationKey = QStringLiteral("last_station");
const QString autoReconnectKey = QStringLiteral("auto_reconnect");
const QString autoSkipUnreachableKey = QStringLiteral("auto_skip_unreachable");
const QString connectTimeoutKey = QStringLiteral("connect_timeout_seconds");
const QString themeModeKey = QStringLiteral("theme_mode");
const QString lastSyncDateKey = QStringLiteral("last_sync_date");
const QString carFavoritesOnlyKey = QStringLiteral("car_favorites_only");
const QString autoPlayInCarKey = QStringLiteral("auto_play_in_car");

constexpr qsizetype maxRecents = 12;
constexpr qint64 defaultConnectTimeout = 8;

qint64 clampedTimeout(qint64 seconds)
{
    return std::clamp<qint64>(seconds, 5, 12);
}

}

void StationRepository::readSettings()
{
    m_favorites = m_defaults.strings(favoritesKey).value_or(QStringList());
    m_recentIds = m_defaults.strings(recentStationsKey).value_or(QStringList());
    m_lastPlayedId = m_defaults.string(lastStationKey);
    m_autoReconnect = m_defaults.boolean(autoReconnectKey).value_or(true);
    m_autoSkipUnreachable = m_defaults.boolean(autoSkipUnreachableKey).value_or(false);
    m_connectTimeoutSeconds = clampedTimeout(m_defaults.integer(connectTimeoutKey).value_or(defaultConnectTimeout));
    m_themeMode = themeModeFromText(m_defaults.string(themeModeKey).value_or(QString()));
    m_lastSyncDate = m_defaults.date(lastSyncDateKey);
    m_carFavoritesOnly = m_defaults.boolean(carFavoritesOnlyKey).value_or(true);
    m_autoPlayInCar = m_defaults.boolean(autoPlayInCarKey).value_or(true);
}

bool StationRepository::toggleFavorite(const QString& id)
{
    QStringList ids = favorites();
    const bool added = !ids.removeOne(id);
    if (added)
        ids.append(id);
    m_favorites = ids;
    m_defaults.setStrings(favoritesKey, ids);
    Q_EMIT m_broadcasts.radioFavoritesDidChange();
    return added;
}

void StationRepository::setLastPlayed(const QString& id)
{
    m_lastPlayedId = id;
    m_defaults.setString(lastStationKey, id);

    QStringList recents = recentIds();
    recents.removeAll(id);
    recents.prepend(id);
    recents = recents.first(std::min(recents.size(), maxRecents));
    if (recents == recentIds())
        return;
    m_recentIds = recents;
    m_defaults.setStrings(recentStationsKey, recents);
    Q_EMIT m_broadcasts.radioLibraryDidChange();
}

void StationRepository::setAutoReconnect(bool on)
{
    m_autoReconnect = on;
    m_defaults.setBoolean(autoReconnectKey, on);
    Q_EMIT m_broadcasts.radioSettingsDidChange();
}

void StationRepository::setAutoSkipUnreachable(bool on)
{
    // Announced to nobody: the engine asks when it needs to know.
    m_autoSkipUnreachable = on;
    m_defaults.setBoolean(autoSkipUnreachableKey, on);
}

void StationRepository::setConnectTimeout(qint64 seconds)
{
    m_connectTimeoutSeconds = clampedTimeout(seconds);
    m_defaults.setInteger(connectTimeoutKey, clampedTimeout(seconds));
    Q_EMIT m_broadcasts.radioSettingsDidChange();
}

void StationRepository::setThemeMode(ThemeMode mode)
{
    m_themeMode = mode;
    m_defaults.setString(themeModeKey, toText(mode));
}

}
