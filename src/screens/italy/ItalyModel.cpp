// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/italy/ItalyModel.h"

#include "catalogue/StationRepository.h"

namespace velarin {

ItalyModel::ItalyModel(StationRepository& repository, RadioPlayer& radio, PlaybackCoordinator& coordinator)
    : m_repository(repository)
    , m_stations(repository, radio, coordinator)
{
    connect(&repository, &StationRepository::revisionChanged, this, &ItalyModel::refresh);
    connect(&repository, &StationRepository::isLoadedChanged, this, &ItalyModel::refresh);
    connect(&repository, &StationRepository::isLoadedChanged, this, &ItalyModel::loadedChanged);
    m_stations.setStations(repository.sortedCache());
}

QString ItalyModel::title() const
{
    return tr("Radio italiane");
}

QString ItalyModel::subtitle() const
{
    return isLoaded() ? tr("%1 radio in elenco").arg(m_stations.count()) : QString();
}

bool ItalyModel::isLoaded() const
{
    return m_repository.isLoaded();
}

void ItalyModel::refresh()
{
    m_stations.setStations(m_repository.sortedCache());
    Q_EMIT subtitleChanged();
}

}
