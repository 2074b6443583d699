// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/parts/MonogramProvider.h"

#include "artwork/Monogram.h"
#include "screens/parts/RoundedPicture.h"

#include <QUrl>

#include <algorithm>

namespace velarin {

namespace {

constexpr int usualSide = 128;
// A picture wider than any window is a mistake of the caller, or an attempt to use up the memory.
constexpr int widest = 4096;

QImage draw(const QString& name, int side, double corner)
{
    QImage picture = Monogram::image(name, side);
    // A monogram comes with a corner of an eighth of its side; only a rounder one has to be cut.
    return corner > side * 0.125 ? roundedPicture(picture, side, corner) : picture;
}

}

QImage MonogramProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const int side = requestedSize.width() > 0 ? std::min(requestedSize.width(), widest) : usualSide;
    const QString key = QString::number(side) + u'/' + id;
    *size = QSize(side, side);
    if (const QImage* drawn = m_drawn.object(key))
        return *drawn;
    const double corner = id.section(u'/', 0, 0).toDouble();
    QImage picture = draw(QUrl::fromPercentEncoding(id.section(u'/', 1).toUtf8()), side, corner);
    m_drawn.insert(key, new QImage(picture), picture.sizeInBytes());
    return picture;
}

}
