// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace velarin {

// The picture that stands in where there is none: a rounded square with a diagonal gradient and up to three white
// initials, made of the name alone, so the same name looks the same everywhere and for ever. No state; any thread.
namespace Monogram {

struct Colors
{
    QColor first;
    QColor second;
    bool operator==(const Colors&) const = default;
};

[[nodiscard]] Colors colors(QStringView name);
[[nodiscard]] QString letters(QStringView name);

// `side` pixels square, the corners transparent; a transparent pixel if there is no memory for it, or if
// nobody could want it so large.
[[nodiscard]] QImage image(QStringView name, int side);

}

}
