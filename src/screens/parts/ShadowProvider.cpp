// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/parts/ShadowProvider.h"

#include <QPainter>

#include <algorithm>
#include <vector>

namespace velarin {

namespace {

// The stretched middle of a patch, in pixels.
constexpr int middle = 2;
constexpr int largestCorner = 64;

// Whole numbers, so that a running sum comes back to nothing where there is nothing.
using Alphas = std::vector<qint32>;
constexpr qint32 opaque = 255 * 256;

// One pass of a box blur over a row or a column of the square, beginning at `start` and going on by `step`.
void blurLine(const Alphas& from, Alphas& to, int start, int step, int side, int radius)
{
    qint32 sum = 0;
    const auto at = [&](int index) {
        const int place = start + index * step;
        return index < 0 || index >= side ? 0 : from[static_cast<std::size_t>(place)];
    };
    for (int index = -radius; index <= radius; ++index)
        sum += at(index);
    for (int index = 0; index < side; ++index) {
        const int place = start + index * step;
        to[static_cast<std::size_t>(place)] = sum / (2 * radius + 1);
        sum += at(index + radius + 1) - at(index - radius);
    }
}

// Three box blurs come within a few percent of a Gaussian one, and reach three radii.
constexpr int passes = 3;

int blurRadius(const Shadow& shadow)
{
    return std::max(1, shadow.blur / passes);
}

void blur(Alphas& alphas, int side, int radius)
{
    Alphas between(alphas.size());
    for (int pass = 0; pass < passes; ++pass) {
        for (int line = 0; line < side; ++line)
            blurLine(alphas, between, line * side, 1, side, radius);
        for (int line = 0; line < side; ++line)
            blurLine(between, alphas, line, side, side, radius);
    }
}

QImage square(int side, int margin, int corner)
{
    QImage shape(side, side, QImage::Format_Alpha8);
    shape.fill(0);
    QPainter painter(&shape);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(QRect(margin, margin, side - 2 * margin, side - 2 * margin), corner, corner);
    return shape;
}

Alphas alphasOf(const QImage& shape)
{
    Alphas alphas;
    for (int y = 0; y < shape.height(); ++y) {
        const uchar* line = shape.constScanLine(y);
        std::transform(line, line + shape.width(), std::back_inserter(alphas), [](uchar value) { return value * 256; });
    }
    return alphas;
}

QImage painted(const Alphas& alphas, int side, const Shadow& shadow)
{
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    for (int y = shadow.offset; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const int place = (y - shadow.offset) * side + x;
            const qint32 alpha = alphas[static_cast<std::size_t>(place)];
            QColor color = shadow.color;
            color.setAlpha(color.alpha() * alpha / opaque);
            picture.setPixelColor(x, y, color);
        }
    }
    return picture;
}

}

std::optional<Shadow> shadow(QStringView step, bool dark)
{
    if (step == u"art")
        return Shadow{ 1, 2, QColor(0, 0, 0, dark ? 71 : 41) };
    if (step == u"pop")
        return Shadow{ 10, 30, dark ? QColor(0, 0, 0, 115) : QColor(0x0F, 0x23, 0x50, 46) };
    // The artwork of the player bar lies as flat in both schemes.
    if (step == u"bar")
        return Shadow{ 0, 2, QColor(0, 0, 0, 41) };
    return std::nullopt;
}

int reach(const Shadow& shadow)
{
    return passes * blurRadius(shadow) + shadow.offset;
}

int patchBorder(const Shadow& shadow, int corner)
{
    return reach(shadow) + corner + shadow.blur / 4;
}

QImage shadowPatch(const Shadow& shadow, int corner)
{
    const int side = 2 * patchBorder(shadow, corner) + middle;
    Alphas alphas = alphasOf(square(side, reach(shadow), corner));
    blur(alphas, side, blurRadius(shadow));
    return painted(alphas, side, shadow);
}

QImage ShadowProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    static_cast<void>(requestedSize);
    const auto found = shadow(id.section(u'/', 0, 0), id.section(u'/', 1, 1) == u"dark");
    if (!found)
        return {};
    QImage picture = shadowPatch(*found, std::clamp(id.section(u'/', 2, 2).toInt(), 0, largestCorner));
    *size = picture.size();
    return picture;
}

}
