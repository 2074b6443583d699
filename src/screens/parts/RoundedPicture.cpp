// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/parts/RoundedPicture.h"

#include <QBrush>
#include <QPainter>

namespace velarin {

QImage roundedPicture(const QImage& picture, int side, double corner)
{
    const QImage scaled = picture.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage rounded(side, side, QImage::Format_ARGB32_Premultiplied);
    rounded.fill(Qt::transparent);
    QPainter painter(&rounded);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush(scaled));
    painter.drawRoundedRect(rounded.rect(), corner, corner);
    return rounded;
}

}
