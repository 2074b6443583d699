// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/MediaControls.h"

#include <QDBusObjectPath>
#include <QVariantMap>

namespace velarin {

// The object path that names an item: its id's UTF-8 bytes in hexadecimal, since a path takes letters, digits and "_"
// only. An item without an id is "_".
[[nodiscard]] QDBusObjectPath trackPath(const QString& contentId);
// MPRIS's own name for "nothing is loaded".
[[nodiscard]] QDBusObjectPath noTrackPath();

// The property Metadata (MPRIS 2.2; the xesam ontology for types). What is not known is left out; with nothing loaded
// only the path of no track remains. `artwork` is empty until the picture's file is there.
[[nodiscard]] QVariantMap mprisMetadata(const std::optional<NowPlaying>& nowPlaying, const QUrl& artwork);

}
