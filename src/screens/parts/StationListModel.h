// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/Station.h"

#include <QAbstractListModel>
#include <QHash>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace velarin {

class PlaybackCoordinator;
class RadioPlayer;
class StationRepository;

// A list of stations as tiles show it, and what a click on one does. The list is also the queue that a click plays.
class StationListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the page that owns the list")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role
    {
        NameRole = Qt::UserRole,
        SubtitleRole,
        // What a screen reader says of the tile.
        SpokenRole,
        FavoriteRole,
        // The station that the radio has in hand.
        CurrentRole,
        // The station that sounds.
        AiringRole,
        HasHomepageRole,
    };

    StationListModel(StationRepository& repository, RadioPlayer& radio, PlaybackCoordinator& coordinator);

    void setStations(const QList<Station>& stations);
    [[nodiscard]] int count() const { return static_cast<int>(m_stations.size()); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void play(int row);
    Q_INVOKABLE void toggleFavorite(int row);
    Q_INVOKABLE void openHomepage(int row);
    // The first row after `row`, round the end, whose name begins with `typed`; -1 if there is none. Case and accents
    // do not count.
    Q_INVOKABLE int rowBeginningWith(const QString& typed, int row) const;

Q_SIGNALS:
    void countChanged();
    // A web page wants to be opened in the browser.
    void homepageRequested(const QUrl& address);

private:
    [[nodiscard]] bool isCurrent(const Station& station) const;
    [[nodiscard]] QString spoken(const Station& station) const;
    void tellFavorites();
    void tellPlaying();
    void tell(const QString& id, const QList<int>& roles);

    StationRepository& m_repository;
    RadioPlayer& m_radio;
    PlaybackCoordinator& m_coordinator;
    QList<Station> m_stations;
    QHash<QString, int> m_rows;
    // As last told, so that a change repaints two tiles and not two thousand.
    QSet<QString> m_favorites;
    QString m_playingId;
};

}
