// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "coordination/PlaybackCoordinator.h"
#include "radio/PlaybackState.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace velarin {

// What the player bar is decided by.
struct BarFacts
{
    PlaybackCoordinator::Source active{ PlaybackCoordinator::Source::none };
    PlaybackState radio;
    bool hasStation{ false };
    QString radioTitle;
    QString radioSubtitle;
    bool favorite{ false };
    bool canSkip{ false };
    bool playing{ false };
    // 0 to 1.
    float volume{ 1.0F };
};

// What the player bar shows, ready to be drawn.
struct BarFace
{
    Q_GADGET
    QML_VALUE_TYPE(barFace)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(bool hasSource MEMBER hasSource)
    Q_PROPERTY(bool failed MEMBER failed)
    Q_PROPERTY(bool waiting MEMBER waiting)
    Q_PROPERTY(bool live MEMBER live)
    Q_PROPERTY(bool canSkip MEMBER canSkip)
    Q_PROPERTY(bool showsHeart MEMBER showsHeart)
    Q_PROPERTY(bool favorite MEMBER favorite)
    Q_PROPERTY(QString heartSymbol MEMBER heartSymbol)
    Q_PROPERTY(QString heartHelp MEMBER heartHelp)
    Q_PROPERTY(QString playSymbol MEMBER playSymbol)
    Q_PROPERTY(QString volumeSymbol MEMBER volumeSymbol)

public:
    QString title;
    QString subtitle;
    bool hasSource{ false };
    // The subtitle tells a failure, and the station can be started again.
    bool failed{ false };
    // Sound has been asked for and is not there yet.
    bool waiting{ false };
    // The equaliser and "In diretta" stand in the timeline.
    bool live{ false };
    bool canSkip{ false };
    bool showsHeart{ false };
    bool favorite{ false };
    QString heartSymbol;
    QString heartHelp;
    QString playSymbol;
    QString volumeSymbol;

    bool operator==(const BarFace&) const = default;
};

[[nodiscard]] BarFace barFace(const BarFacts& facts);

}
