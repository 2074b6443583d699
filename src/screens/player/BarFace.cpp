// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/player/BarFace.h"

#include <QCoreApplication>

namespace velarin {

namespace {

using Source = PlaybackCoordinator::Source;

QString words(const char* text)
{
    return QCoreApplication::translate("PlayerBar", text);
}

QString title(const BarFacts& facts)
{
    switch (facts.active) {
    case Source::none:
        return words("Niente in riproduzione");
    case Source::radio:
        return facts.radioTitle;
    case Source::podcast:
        return words("Podcast");
    case Source::music:
        return words("Musica");
    }
    return {};
}

QString subtitle(const BarFacts& facts)
{
    switch (facts.active) {
    case Source::none:
        return words("Scegli una radio");
    case Source::radio:
        return facts.radioSubtitle;
    case Source::podcast:
    case Source::music:
        return {};
    }
    return {};
}

void showRadio(BarFace& face, const BarFacts& facts)
{
    face.failed = is<Failed>(facts.radio);
    face.waiting = is<Connecting>(facts.radio) || is<Buffering>(facts.radio);
    face.live = is<Playing>(facts.radio);
    face.showsHeart = facts.hasStation;
}

}

BarFace barFace(const BarFacts& facts)
{
    BarFace face;
    face.title = title(facts);
    face.subtitle = subtitle(facts);
    face.hasSource = facts.active != Source::none;
    if (facts.active == Source::radio)
        showRadio(face, facts);
    face.canSkip = facts.canSkip;
    face.favorite = facts.favorite;
    face.heartSymbol = facts.favorite ? QStringLiteral("heart.fill") : QStringLiteral("heart");
    face.heartHelp = facts.favorite ? words("Rimuovi dai preferiti") : words("Aggiungi ai preferiti");
    face.playSymbol = facts.playing ? QStringLiteral("pause.circle.fill") : QStringLiteral("play.circle.fill");
    face.volumeSymbol = facts.volume <= 0.0F ? QStringLiteral("speaker.slash.fill") : QStringLiteral("speaker.fill");
    return face;
}

}
