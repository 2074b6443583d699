// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/PreviewStation.h"

#include "base/Urls.h"

namespace velarin {

std::optional<Station> previewStation(const QString& address)
{
    Station station;
    station.id = QStringLiteral("custom/preview");
    station.name = QStringLiteral("Anteprima");
    station.streamUrl = address;
    const std::optional<QUrl> url = station.streamURL();
    if (!url || !isWebAddress(*url))
        return std::nullopt;
    station.streamUrl = url->toString(QUrl::FullyEncoded);
    return station;
}

}
