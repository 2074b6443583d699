// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// The shadow of the item it fills, as nine patches: shader effects are not drawn by the software renderer.
BorderImage {
    id: root

    // "art", "pop" or "bar".
    required property string step
    property int corner: 14
    // How far the shadow reaches beyond the item, and what of it the patches hold within.
    readonly property int reach: step === "pop" ? 40 : step === "art" ? 4 : 3
    readonly property int patch: reach + corner + (step === "pop" ? 7 : 0)

    anchors.fill: parent
    anchors.margins: -reach
    border { left: root.patch; right: root.patch; top: root.patch; bottom: root.patch }
    source: "image://shadow/" + root.step + "/" + (Theme.dark ? "dark" : "light") + "/" + root.corner
    Accessible.ignored: true
}
