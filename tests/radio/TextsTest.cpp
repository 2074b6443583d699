// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/FailureMessages.h"
#include "radio/StatusLine.h"

#include "RadioWorld.h"

namespace velarin::test {

TEST(FailureMessages, aTimeoutTellsHowLongTheStationHad)
{
    EXPECT_EQ(FailureMessages::gaveUp(Kind::timeout, u"Uno"_s, 8s),
        u"Uno non ha risposto entro 8 secondi. Riprova tra qualche istante."_s);
}

TEST(FailureMessages, anAddressWithoutAnAnswerSuggestsAnUpdate)
{
    EXPECT_EQ(FailureMessages::gaveUp(Kind::notFound, u"Uno"_s, 8s),
        u"Uno non risponde: l'indirizzo dello stream potrebbe essere cambiato. Prova ad aggiornare l'elenco."_s);
}

TEST(FailureMessages, aForeignFormatIsNamedAsSuch)
{
    EXPECT_EQ(FailureMessages::gaveUp(Kind::unsupported, u"Uno"_s, 8s),
        u"Il formato dello stream di Uno non è supportato."_s);
}

TEST(FailureMessages, everythingElseIsAConnectionThatFailed)
{
    const QString message = u"Impossibile connettersi a Uno. Controlla la connessione e riprova."_s;
    EXPECT_EQ(FailureMessages::gaveUp(Kind::network, u"Uno"_s, 8s), message);
    EXPECT_EQ(FailureMessages::gaveUp(Kind::offline, u"Uno"_s, 8s), message);
    EXPECT_EQ(FailureMessages::gaveUp(Kind::unknown, u"Uno"_s, 8s), message);
}

TEST(FailureMessages, patienceTellsItsDelay)
{
    EXPECT_EQ(FailureMessages::retriesPatiently(u"Uno"_s, 120s),
        u"Uno non risponde. Continuo a riprovare da sola ogni 120 secondi."_s);
}

TEST(FailureMessages, offlineSaysThatTheRadioComesBackByItself)
{
    EXPECT_EQ(FailureMessages::offline(), u"Nessuna connessione a internet. Riparte da sola appena torna la rete."_s);
}

TEST(FailureMessages, aNameThatLooksLikeAPlaceMarkerStandsAsItIs)
{
    EXPECT_EQ(FailureMessages::retriesPatiently(u"Radio %2 %1"_s, 15s),
        u"Radio %2 %1 non risponde. Continuo a riprovare da sola ogni 15 secondi."_s);
}

TEST(StatusLine, tellsEachState)
{
    EXPECT_EQ(statusLine(Idle{}), u"Pronta"_s);
    EXPECT_EQ(statusLine(Buffering{}), u"Buffering…"_s);
    EXPECT_EQ(statusLine(Playing{}), u"In diretta"_s);
    EXPECT_EQ(statusLine(Paused{}), u"In pausa"_s);
    EXPECT_EQ(statusLine(Failed{ { Kind::network, u"Il messaggio"_s } }), u"Il messaggio"_s);
}

TEST(StatusLine, theFirstAttemptIsAConnection)
{
    EXPECT_EQ(statusLine(Connecting{ 1, 5 }), u"Connessione…"_s);
    EXPECT_EQ(statusLine(Connecting{ 0, 5 }), u"Connessione…"_s);
}

TEST(StatusLine, aLaterAttemptIsCounted)
{
    EXPECT_EQ(statusLine(Connecting{ 2, 5 }), u"Riconnessione… tentativo 2 di 5"_s);
    EXPECT_EQ(statusLine(Connecting{ 5, 5 }), u"Riconnessione… tentativo 5 di 5"_s);
}

}
