// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/parts/StationListModel.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velarin {

// The page of the Italian stations.
class ItalyModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(velarin::StationListModel* stations READ stations CONSTANT)
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY subtitleChanged)
    // False until the catalogue has been read.
    Q_PROPERTY(bool loaded READ isLoaded NOTIFY loadedChanged)

public:
    ItalyModel(StationRepository& repository, RadioPlayer& radio, PlaybackCoordinator& coordinator);

    [[nodiscard]] StationListModel* stations() { return &m_stations; }
    [[nodiscard]] QString title() const;
    // Empty until the catalogue has been read: "0 radio" would be a false word.
    [[nodiscard]] QString subtitle() const;
    [[nodiscard]] bool isLoaded() const;

Q_SIGNALS:
    void subtitleChanged();
    void loadedChanged();

private:
    void refresh();

    StationRepository& m_repository;
    StationListModel m_stations;
};

}
