// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/RadioPlayer.h"

#include "radio/RadioLog.h"
#include "radio/StreamTitle.h"

namespace velarin {

void RadioPlayer::applyStreamTitle(const QString& text)
{
    const std::optional<Station> current = m_station;
    if (!current)
        return;
    const StreamTitle::Parsed parsed = StreamTitle::parse(text, current->name);
    if (std::holds_alternative<StreamTitle::NoSong>(parsed))
        showSong(std::nullopt, std::nullopt);
    else if (const auto* song = std::get_if<StreamTitle::Song>(&parsed))
        showSong(song->artist, song->title);
}

void RadioPlayer::showSong(const std::optional<QString>& artist, const std::optional<QString>& title)
{
    if (title == songTitle() && artist == songArtist())
        return;
    if (title)
        qCInfo(radioLog, "now playing: %s - %s", qUtf8Printable(artist.value_or(QString())), qUtf8Printable(*title));
    m_songTitle = title;
    m_songArtist = artist;
    publish();
}

}
