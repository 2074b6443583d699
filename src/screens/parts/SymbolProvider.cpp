// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/parts/SymbolProvider.h"

#include "screens/parts/Symbols.h"

namespace velarin {

namespace {

// The side of an icon for which nobody gave one, in pixels.
constexpr int usualSide = 16;

}

QImage SymbolProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const QString name = id.section(u'/', 0, 0);
    const QColor ink(u'#' + id.section(u'/', 1, 1));
    const int side = requestedSize.width() > 0 ? requestedSize.width() : usualSide;
    QImage image = Symbols::image(name, ink, side);
    *size = image.size();
    return image;
}

}
