// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QQuickImageProvider>

namespace velarin {

// "image://playing/NUMBER/CORNER": the picture of what plays, rounded, at the size asked for. NUMBER only tells Qt
// Quick that the picture is another one. Main thread.
class PictureProvider final : public QQuickImageProvider
{
public:
    static constexpr auto scheme = "playing";

    PictureProvider()
        : QQuickImageProvider(Image)
    {
    }

    void setPicture(const QImage& picture) { m_picture = picture; }

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    QImage m_picture;
};

}
