// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/parts/StationListModel.h"

#include "base/TextFolding.h"
#include "base/Urls.h"
#include "catalogue/StationRepository.h"
#include "coordination/PlaybackCoordinator.h"
#include "radio/RadioPlayer.h"

#include <optional>

namespace velarin {

namespace {

QSet<QString> setOf(const QStringList& list)
{
    return { list.begin(), list.end() };
}

// Only web addresses: a directory's record must not open a file or start a program.
std::optional<QUrl> homepage(const Station& station)
{
    const auto address = urlFromText(station.homepage.value_or(QString()));
    return address && isWebAddress(*address) ? address : std::nullopt;
}

}

StationListModel::StationListModel(StationRepository& repository, RadioPlayer& radio, PlaybackCoordinator& coordinator)
    : m_repository(repository)
    , m_radio(radio)
    , m_coordinator(coordinator)
    , m_favorites(setOf(repository.favorites()))
{
    connect(&repository, &StationRepository::favoritesChanged, this, &StationListModel::tellFavorites);
    connect(&radio, &RadioPlayer::stationChanged, this, &StationListModel::tellPlaying);
    connect(&radio, &RadioPlayer::stateChanged, this, &StationListModel::tellPlaying);
    connect(&coordinator, &PlaybackCoordinator::activeChanged, this, &StationListModel::tellPlaying);
    tellPlaying();
}

void StationListModel::setStations(const QList<Station>& stations)
{
    if (stations == m_stations)
        return;
    beginResetModel();
    m_stations = stations;
    m_rows.clear();
    for (int row = 0; row < count(); ++row)
        m_rows.insert(m_stations[row].id, row);
    endResetModel();
    Q_EMIT countChanged();
}

int StationListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant StationListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    const Station& station = m_stations[index.row()];
    switch (role) {
    case NameRole:
        return station.name;
    case SubtitleRole:
        return station.subtitle();
    case SpokenRole:
        return spoken(station);
    case FavoriteRole:
        return m_favorites.contains(station.id);
    case CurrentRole:
        return isCurrent(station);
    case AiringRole:
        return isCurrent(station) && m_radio.isPlaying();
    case HasHomepageRole:
        return homepage(station).has_value();
    default:
        return {};
    }
}

QHash<int, QByteArray> StationListModel::roleNames() const
{
    return { { NameRole, "name" }, { SubtitleRole, "subtitle" }, { SpokenRole, "spoken" }, { FavoriteRole, "favorite" },
        { CurrentRole, "current" }, { AiringRole, "airing" }, { HasHomepageRole, "hasHomepage" } };
}

void StationListModel::play(int row)
{
    if (row >= 0 && row < count())
        m_radio.play(m_stations[row], m_stations, false);
}

void StationListModel::toggleFavorite(int row)
{
    if (row >= 0 && row < count())
        m_repository.toggleFavorite(m_stations[row].id);
}

void StationListModel::openHomepage(int row)
{
    if (row < 0 || row >= count())
        return;
    if (const auto address = homepage(m_stations[row]))
        Q_EMIT homepageRequested(*address);
}

int StationListModel::rowBeginningWith(const QString& typed, int row) const
{
    const QString wanted = folded(typed);
    if (wanted.isEmpty())
        return -1;
    for (int step = 1; step <= count(); ++step) {
        const int candidate = (row + step) % count();
        if (folded(m_stations[candidate].name).startsWith(wanted))
            return candidate;
    }
    return -1;
}

bool StationListModel::isCurrent(const Station& station) const
{
    return station.id == m_playingId;
}

QString StationListModel::spoken(const Station& station) const
{
    QStringList words{ station.name, station.subtitle() };
    words.removeAll(QString());
    if (isCurrent(station) && m_radio.isPlaying())
        words.append(tr("in onda"));
    if (m_favorites.contains(station.id))
        words.append(tr("preferita"));
    return words.join(QStringLiteral(", "));
}

void StationListModel::tellFavorites()
{
    const QSet<QString> before = std::exchange(m_favorites, setOf(m_repository.favorites()));
    const QSet<QString> changed = (before - m_favorites) + (m_favorites - before);
    for (const QString& id : changed)
        tell(id, { FavoriteRole, SpokenRole });
}

void StationListModel::tellPlaying()
{
    const auto station = m_radio.station();
    const bool active = m_coordinator.active() == PlaybackCoordinator::Source::radio;
    const QString before = std::exchange(m_playingId, active && station ? station->id : QString());
    tell(m_playingId, { CurrentRole, AiringRole, SpokenRole });
    if (before != m_playingId)
        tell(before, { CurrentRole, AiringRole, SpokenRole });
}

void StationListModel::tell(const QString& id, const QList<int>& roles)
{
    const auto row = m_rows.constFind(id);
    if (row != m_rows.constEnd())
        Q_EMIT dataChanged(index(*row), index(*row), roles);
}

}
