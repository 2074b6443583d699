// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/parts/Symbols.h"

#include <QHash>
#include <QPainter>
#include <QSvgRenderer>

namespace velarin::Symbols {

namespace {

const QHash<QString, QString>& table()
{
    static const QHash<QString, QString> drawings{
        { QStringLiteral("arc"), QStringLiteral("arc") },
        { QStringLiteral("arrow.clockwise"), QStringLiteral("arrow-clockwise") },
        { QStringLiteral("backward.fill"), QStringLiteral("skip-start-fill") },
        // Nothing drawn, in the place of a mark.
        { QStringLiteral("blank"), QStringLiteral("blank") },
        { QStringLiteral("checkmark"), QStringLiteral("check2") },
        { QStringLiteral("dot.radiowaves.left.and.right"), QStringLiteral("broadcast") },
        { QStringLiteral("forward.fill"), QStringLiteral("skip-end-fill") },
        { QStringLiteral("heart"), QStringLiteral("heart") },
        { QStringLiteral("heart.fill"), QStringLiteral("heart-fill") },
        { QStringLiteral("heart.slash"), QStringLiteral("heart-slash") },
        { QStringLiteral("menu"), QStringLiteral("list") },
        { QStringLiteral("output"), QStringLiteral("speaker") },
        { QStringLiteral("pause.circle.fill"), QStringLiteral("pause-circle-fill") },
        { QStringLiteral("play.circle"), QStringLiteral("play-circle") },
        { QStringLiteral("play.circle.fill"), QStringLiteral("play-circle-fill") },
        { QStringLiteral("play.fill"), QStringLiteral("play-fill") },
        { QStringLiteral("safari"), QStringLiteral("box-arrow-up-right") },
        { QStringLiteral("speaker.fill"), QStringLiteral("volume-off-fill") },
        { QStringLiteral("speaker.slash.fill"), QStringLiteral("volume-mute-fill") },
    };
    return drawings;
}

QImage emptyImage(int side)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

}

QStringList names()
{
    return table().keys();
}

QString path(const QString& name)
{
    const auto found = table().constFind(name);
    return found == table().constEnd() ? QString() : QStringLiteral(":/symbols/%1.svg").arg(*found);
}

QImage image(const QString& name, const QColor& ink, int side)
{
    const QString drawn = path(name);
    if (drawn.isEmpty())
        return {};
    QSvgRenderer renderer(drawn);
    QImage drawing = emptyImage(side);
    QPainter painter(&drawing);
    renderer.render(&painter, QRectF(0, 0, side, side));
    // The drawing is only a shape: whatever it was painted with, the ink takes its place.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(drawing.rect(), ink);
    return drawing;
}

}
