// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/parts/PictureProvider.h"

#include "screens/parts/RoundedPicture.h"

namespace velarin {

QImage PictureProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const int side = requestedSize.width() > 0 ? requestedSize.width() : m_picture.width();
    *size = QSize(side, side);
    if (m_picture.isNull())
        return {};
    return roundedPicture(m_picture, side, id.section(u'/', 1, 1).toDouble());
}

}
