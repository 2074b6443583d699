// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

// The heart on a tile. A filled one always shows; an outline keeps to the background until the tile is looked at, so that
// a page of two thousand stations is not a page of two thousand hearts.
T.AbstractButton {
    id: root

    required property string station
    required property bool favorite
    required property bool awake
    readonly property string help: favorite ? qsTr("Rimuovi dai preferiti") : qsTr("Aggiungi ai preferiti")

    signal toggled()

    implicitWidth: 26
    implicitHeight: 26
    hoverEnabled: true
    // The tile is one stop of the keyboard; its menu holds the heart.
    focusPolicy: Qt.NoFocus
    opacity: favorite || awake || hovered ? 1 : 0.4
    onClicked: root.toggled()
    Accessible.role: Accessible.Button
    // A name of its own on each tile: the bar has a heart with the bare text.
    Accessible.name: root.help + ", " + root.station
    Accessible.onPressAction: root.toggled()

    background: Rectangle {
        radius: 13
        color: Theme.overlay
        visible: root.favorite || root.awake || root.hovered
    }
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            anchors.verticalCenterOffset: 0.5
            symbol: root.favorite ? "heart.fill" : "heart"
            side: root.down ? 12 : 14
            ink: root.favorite ? Theme.pinkOnArtwork : "#FFFFFF"
        }
    }
    AppToolTip {
        text: root.help
        visible: root.hovered && !root.down
    }
}
