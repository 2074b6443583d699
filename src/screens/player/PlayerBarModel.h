// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/parts/PlaybackServices.h"
#include "screens/player/BarFace.h"

#include <QImage>
#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace velarin {

// The player bar: shows whichever source the coordinator holds active. What drives the playback is PlaybackCommands.
class PlayerBarModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(velarin::BarFace face READ face NOTIFY faceChanged)
    // Rises with each picture of the radio; 0 while there is none.
    Q_PROPERTY(int pictureNumber READ pictureNumber NOTIFY pictureNumberChanged)
    Q_PROPERTY(double volume READ volume WRITE setVolume NOTIFY volumeChanged)

public:
    // `showPicture` gets every picture that the bar shall show, before its number changes.
    PlayerBarModel(PlaybackServices services, std::function<void(const QImage&)> showPicture);

    [[nodiscard]] const BarFace& face() const { return m_face; }
    [[nodiscard]] int pictureNumber() const { return m_pictureNumber; }
    [[nodiscard]] double volume() const;
    void setVolume(double volume);

    Q_INVOKABLE void toggleFavorite();
    Q_INVOKABLE void retry();
    // To silence, and from silence to full.
    Q_INVOKABLE void toggleMute();
    Q_INVOKABLE void openFullPlayer();

Q_SIGNALS:
    void faceChanged();
    void pictureNumberChanged();
    void volumeChanged();

private:
    [[nodiscard]] BarFacts facts() const;
    void updateFace();
    void updatePicture();

    PlaybackServices m_services;
    std::function<void(const QImage&)> m_showPicture;
    BarFace m_face;
    int m_pictureNumber{ 0 };
    int m_picturesShown{ 0 };
};

}
