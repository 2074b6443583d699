// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/StreamTitle.h"

#include "base/TextFolding.h"

#include <QStringList>

#include <algorithm>

namespace velarin::StreamTitle {

namespace {

std::optional<QString> unlessEmpty(const QString& text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

QString cleaned(QString text)
{
    // Some encoders pad the field with zeros.
    return trimmed(text.replace(QChar(u'\0'), QChar(u' ')));
}

bool tellsNoSong(const QString& text, const QString& stationName)
{
    return text.isEmpty() || characterCount(text) >= tooLong || equalsIgnoringCase(text, stationName);
}

// Automation systems write ARTIST~TITLE~YEAR~SECONDS and leave out what they do not know.
Parsed splitAtTildes(const QString& text)
{
    QStringList pieces = text.split(u'~');
    for (QString& piece : pieces)
        piece = trimmed(piece);
    const QString first = pieces.takeFirst();
    const auto found =
        std::find_if(pieces.cbegin(), pieces.cend(), [](const QString& piece) { return !piece.isEmpty(); });
    if (found == pieces.cend() && first.isEmpty())
        return Nothing{};
    return Song{ unlessEmpty(first), found == pieces.cend() ? first : *found };
}

// The text is trimmed, so something stands on both sides.
Parsed splitAtDash(const QString& text)
{
    const QString dash = QStringLiteral(" - ");
    const qsizetype at = text.indexOf(dash);
    if (at < 0)
        return Song{ std::nullopt, text };
    return Song{ trimmed(QStringView(text).left(at)), trimmed(QStringView(text).mid(at + dash.size())) };
}

}

Parsed parse(const QString& rawText, const QString& stationName)
{
    const QString text = cleaned(rawText);
    if (tellsNoSong(text, stationName))
        return NoSong{};
    return text.contains(u'~') ? splitAtTildes(text) : splitAtDash(text);
}

}
