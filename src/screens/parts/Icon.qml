// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// A symbol in one colour, `side` pixels square.
Image {
    id: root

    required property string symbol
    property color ink: Theme.text2
    property int side: 16

    width: side
    height: side
    // An id cannot hold the "#" of a colour.
    source: root.symbol === "" ? "" : "image://symbol/" + root.symbol + "/" + String(root.ink).slice(1)
    sourceSize.width: Math.round(side * Screen.devicePixelRatio)
    sourceSize.height: Math.round(side * Screen.devicePixelRatio)
    Accessible.ignored: true
}
