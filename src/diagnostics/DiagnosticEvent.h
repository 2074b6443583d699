// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

namespace velarin {

enum class DiagnosticCategory
{
    app,
    playback,
    error,
    network,
    // Nothing logs to it; it stays so that an older file still decodes.
    car,
    interruption,
    remote,
    alarm,
    heartbeat,
};

// One line of the log, in the user's language.
struct DiagnosticEvent
{
    QUuid id;
    QDateTime date;
    DiagnosticCategory category{ DiagnosticCategory::app };
    QString message;
    bool operator==(const DiagnosticEvent&) const = default;
};

}
