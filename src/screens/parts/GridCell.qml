// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// One place of the grid, and the tile in it. The view spans the page, so that what grows beyond the outer tiles is not cut
// off; the tile stands on whole pixels though the columns share the width evenly.
Item {
    id: root

    required property int index
    required property string name
    required property string subtitle
    required property string spoken
    required property bool favorite
    required property bool current
    required property bool airing
    required property bool hasHomepage
    property int tileSide: 140
    property bool focusShown: false

    signal pressed()
    signal played()
    signal favoriteToggled()
    signal menuRequested(real x, real y)

    StationTile {
        x: Theme.gutter + Math.round(root.x) - root.x
        width: root.tileSide
        name: root.name
        subtitle: root.subtitle
        spoken: root.spoken
        favorite: root.favorite
        current: root.current
        airing: root.airing
        focusShown: root.focusShown
        onPressed: root.pressed()
        onPlayed: root.played()
        onFavoriteToggled: root.favoriteToggled()
        onMenuRequested: (x, y) => root.menuRequested(x + Theme.gutter, y)
    }
}
