// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <QStringList>

namespace velarin {

// The names under which the screens ask for icons, and the drawing that stands for each. Any thread.
namespace Symbols {

// Every name in the table.
[[nodiscard]] QStringList names();
// The compiled-in SVG of a name; empty for a name that is not in the table.
[[nodiscard]] QString path(const QString& name);
// The drawing in one colour, `side` pixels square; null for a name that is not in the table.
[[nodiscard]] QImage image(const QString& name, const QColor& ink, int side);

}

}
