// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>
#include <variant>

namespace velarin {

// What the title that a stream announces tells.
namespace StreamTitle {

// A text of this many user-perceived characters is no title any more.
constexpr qsizetype tooLong = 160;

// Between songs: the text is empty, far too long, or the station's own name.
struct NoSong
{
    bool operator==(const NoSong&) const = default;
};
// Separators with nothing between them; what is shown stays.
struct Nothing
{
    bool operator==(const Nothing&) const = default;
};
struct Song
{
    std::optional<QString> artist;
    QString title;
    bool operator==(const Song&) const = default;
};

using Parsed = std::variant<NoSong, Nothing, Song>;

// "ARTIST - TITLE", or "ARTIST~TITLE~...", or a title alone.
[[nodiscard]] Parsed parse(const QString& text, const QString& stationName);

}

}
