// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// The shadow of the item it fills, as nine patches: shader effects are not drawn by the software renderer.
BorderImage {
    id: root

    // "art", "pop" or "bar", and how far that shadow reaches beyond the item.
    required property string step
    required property int reach
    property int corner: 14
    readonly property int patch: reach + corner

    anchors.fill: parent
    anchors.margins: -reach
    border { left: root.patch; right: root.patch; top: root.patch; bottom: root.patch }
    source: "image://shadow/" + root.step + "/" + (Theme.dark ? "dark" : "light") + "/" + root.corner
    Accessible.ignored: true
}
