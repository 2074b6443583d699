// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickImageProvider>

#include <optional>

namespace velarin {

// One step of elevation: how far the shadow falls, how soft it is (pixels), and how dark.
struct Shadow
{
    int offset{ 0 };
    int blur{ 0 };
    QColor color;
    bool operator==(const Shadow&) const = default;
};

// By the names "art", "pop" and "bar", for either scheme; absent for another name.
[[nodiscard]] std::optional<Shadow> shadow(QStringView step, bool dark);
// How far a shadow reaches beyond the thing that throws it, which is also what a picture of it adds on each side.
[[nodiscard]] int reach(const Shadow& shadow);
// How wide the border of its nine patches is: what lies beyond the thing, its corner, and what lies within it until the
// shadow is nearly whole. Narrow enough for a menu of one row.
[[nodiscard]] int patchBorder(const Shadow& shadow, int corner);
// The shadow of a rounded square just large enough to be stretched as nine patches.
[[nodiscard]] QImage shadowPatch(const Shadow& shadow, int corner);

// "image://shadow/STEP/dark|light/CORNER".
class ShadowProvider final : public QQuickImageProvider
{
public:
    static constexpr auto scheme = "shadow";

    ShadowProvider()
        : QQuickImageProvider(Image)
    {
    }

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}
