// SPDX-License-Identifier: GPL-3.0-or-later
#include "artwork/Monogram.h"

#include "base/StableHash.h"
#include "base/TextFolding.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace velarin::Monogram {

namespace {

// The picture is composed on a canvas of this side and scaled, so that every size has the same proportions.
constexpr qreal canvas = 500.0;
constexpr qreal cornerShare = 0.125;
constexpr qsizetype mostLetters = 3;
// Pixels; a larger picture is nobody's wish, and an allocator may end the program over it.
constexpr int largestSide = 8192;

qreal hue(QStringView name)
{
    const auto bits = static_cast<quint32>(javaHashCode(name)) & 0x00FF'FFFFU;
    return static_cast<qreal>(bits % 360U) / 360.0;
}

bool beginsWithLetterOrNumber(QStringView piece)
{
    return QChar::isLetterOrNumber(piece.toUcs4().constFirst());
}

bool separatesWords(QChar character)
{
    return character == u' ' || character == u'-' || character == u'.';
}

QStringList words(QStringView name)
{
    QStringList found;
    qsizetype start = 0;
    for (qsizetype end = 0; end <= name.size(); ++end) {
        if (end < name.size() && !separatesWords(name[end]))
            continue;
        if (end > start && beginsWithLetterOrNumber(name.sliced(start, end - start)))
            found.append(name.sliced(start, end - start).toString());
        start = end + 1;
    }
    return found;
}

QFont font(const QString& text)
{
    QFont bold;
    bold.setFamilies({ QStringLiteral("Inter"), QStringLiteral("sans-serif") });
    bold.setBold(true);
    bold.setHintingPreference(QFont::PreferNoHinting);
    const qreal share = characterCount(text) < mostLetters ? 0.40 : 0.30;
    bold.setPixelSize(qRound(canvas * share));
    return bold;
}

// The outlines of the letters, their ink in the middle: centring the advance would leave a word that begins with a
// "J" beside the middle.
QPainterPath ink(const QString& text)
{
    QPainterPath path;
    path.addText(QPointF(0, 0), font(text), text);
    const QRectF bounds = path.boundingRect();
    return path.translated(canvas / 2 - bounds.center().x(), canvas / 2 - bounds.center().y());
}

QLinearGradient ground(QStringView name)
{
    QLinearGradient gradient(0, 0, canvas, canvas);
    const Colors ends = colors(name);
    gradient.setColorAt(0, ends.first);
    gradient.setColorAt(1, ends.second);
    return gradient;
}

void draw(QPainter& painter, QStringView name)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground(name));
    painter.drawRoundedRect(QRectF(0, 0, canvas, canvas), canvas * cornerShare, canvas * cornerShare);
    painter.setBrush(Qt::white);
    painter.drawPath(ink(letters(name)));
}

QImage transparentPixel()
{
    QImage pixel(1, 1, QImage::Format_ARGB32_Premultiplied);
    pixel.fill(Qt::transparent);
    return pixel;
}

}

Colors colors(QStringView name)
{
    const qreal first = hue(name);
    const qreal second = std::fmod(first + 28.0 / 360.0, 1.0);
    return { QColor::fromHsvF(static_cast<float>(first), 0.55F, 0.72F).toRgb(),
        QColor::fromHsvF(static_cast<float>(second), 0.7F, 0.42F).toRgb() };
}

QString letters(QStringView name)
{
    QString initials;
    const QStringList found = words(name).mid(0, mostLetters);
    for (const QString& word : found)
        initials += firstCharacter(word).toUpper();
    return initials.isEmpty() ? QStringLiteral("?") : initials;
}

QImage image(QStringView name, int side)
{
    if (side > largestSide)
        return transparentPixel();
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        return transparentPixel();
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.scale(side / canvas, side / canvas);
    draw(painter, name);
    return picture;
}

}
