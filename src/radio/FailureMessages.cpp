// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/FailureMessages.h"

#include <QCoreApplication>

namespace velarin::FailureMessages {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(RadioPlayer)
};

QString seconds(std::chrono::seconds duration)
{
    return QString::number(duration.count());
}

}

QString gaveUp(PlaybackFailure::Kind kind, const QString& stationName, std::chrono::seconds timeout)
{
    switch (kind) {
    case PlaybackFailure::Kind::timeout:
        // Both at once, since a station's name may hold a place marker of its own.
        return Texts::tr("%1 non ha risposto entro %2 secondi. Riprova tra qualche istante.")
            .arg(stationName, seconds(timeout));
    case PlaybackFailure::Kind::notFound:
        return Texts::tr("%1 non risponde: l'indirizzo dello stream potrebbe essere cambiato. Prova ad "
                         "aggiornare l'elenco.")
            .arg(stationName);
    case PlaybackFailure::Kind::unsupported:
        return Texts::tr("Il formato dello stream di %1 non è supportato.").arg(stationName);
    case PlaybackFailure::Kind::network:
    case PlaybackFailure::Kind::offline:
    case PlaybackFailure::Kind::unknown:
        break;
    }
    return Texts::tr("Impossibile connettersi a %1. Controlla la connessione e riprova.").arg(stationName);
}

QString retriesPatiently(const QString& stationName, std::chrono::seconds delay)
{
    return Texts::tr("%1 non risponde. Continuo a riprovare da sola ogni %2 secondi.").arg(stationName, seconds(delay));
}

QString offline()
{
    return Texts::tr("Nessuna connessione a internet. Riparte da sola appena torna la rete.");
}

}
