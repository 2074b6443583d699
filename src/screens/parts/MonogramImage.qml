// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// The picture of a name, drawn off the main thread at the size shown.
Image {
    id: root

    required property string name
    // The least corner; a monogram's own is an eighth of its side.
    property int corner: 14
    readonly property int visibleCorner: Math.max(corner, Math.round(width * 0.125))

    asynchronous: true
    source: width > 0 ? "image://monogram/" + Math.round(corner * Screen.devicePixelRatio) + "/"
        + encodeURIComponent(name) : ""
    sourceSize.width: Math.round(width * Screen.devicePixelRatio)
    sourceSize.height: Math.round(width * Screen.devicePixelRatio)
    Accessible.ignored: true
}
