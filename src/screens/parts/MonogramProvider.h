// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QQuickImageProvider>

namespace velarin {

// "image://monogram/CORNER/NAME": the monogram of a name (percent-encoded) at the size asked for, its corner at least
// CORNER pixels. Drawn on the thread that Qt Quick keeps for pictures, the one thread that calls this; what was drawn
// is kept within 24 MiB, so that scrolling back costs nothing.
class MonogramProvider final : public QQuickImageProvider
{
public:
    static constexpr auto scheme = "monogram";
    static constexpr qsizetype mostBytes = 24 * 1024 * 1024;

    MonogramProvider()
        : QQuickImageProvider(Image, ForceAsynchronousImageLoading)
        , m_drawn(mostBytes)
    {
    }

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

    [[nodiscard]] qsizetype keptBytes() const { return m_drawn.totalCost(); }

private:
    QCache<QString, QImage> m_drawn;
};

}
