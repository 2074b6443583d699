// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/StatusLine.h"

#include <QCoreApplication>

namespace velarin {

namespace {

struct Line
{
    Q_DECLARE_TR_FUNCTIONS(RadioPlayer)

public:
    QString operator()(const Idle&) const { return tr("Pronta"); }
    QString operator()(const Buffering&) const { return tr("Buffering…"); }
    QString operator()(const Playing&) const { return tr("In diretta"); }
    QString operator()(const Paused&) const { return tr("In pausa"); }
    QString operator()(const Failed& failed) const { return failed.failure.message; }
    QString operator()(const Connecting& connecting) const
    {
        if (connecting.attempt <= 1)
            return tr("Connessione…");
        return tr("Riconnessione… tentativo %1 di %2").arg(connecting.attempt).arg(connecting.maxAttempts);
    }
};

}

QString statusLine(const PlaybackState& state)
{
    return std::visit(Line{}, state);
}

}
