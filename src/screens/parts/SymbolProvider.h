// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickImageProvider>

namespace velarin {

// "image://symbol/NAME/AARRGGBB": an icon in a colour, as wide as it is asked for. It answers at once, so that an icon
// never appears after its button.
class SymbolProvider final : public QQuickImageProvider
{
public:
    static constexpr auto scheme = "symbol";

    SymbolProvider()
        : QQuickImageProvider(Image)
    {
    }

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}
