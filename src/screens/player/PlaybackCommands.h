// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/parts/PlaybackServices.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velarin {

// The commands of the window's menu and its keys. None is ever disabled: with nothing to act on they do nothing.
class PlaybackCommands : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

public:
    explicit PlaybackCommands(PlaybackServices services);

    Q_INVOKABLE void toggle();
    Q_INVOKABLE void next();
    Q_INVOKABLE void previous();
    // Of the radio's station, whichever source is active.
    Q_INVOKABLE void toggleFavorite();
    Q_INVOKABLE void louder();
    Q_INVOKABLE void quieter();

private:
    void changeVolume(float step);

    PlaybackServices m_services;
};

}
