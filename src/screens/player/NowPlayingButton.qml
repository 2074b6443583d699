// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Velarin.Models
import Velarin.Parts

// What plays: its picture, its title, its second line. A click opens the large player.
T.AbstractButton {
    id: root

    required property barFace face
    required property int pictureNumber
    // The room for the words, in pixels.
    required property real room
    readonly property string help: qsTr("Apri il player grande")

    implicitWidth: Math.min(58 + room, contentItem.implicitWidth)
    implicitHeight: 54
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: root.help
    Accessible.description: root.face.title + ", " + root.face.subtitle
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: FocusRing {
        corner: 9
        visible: root.visualFocus
    }
    contentItem: NowPlayingFace {
        face: root.face
        pictureNumber: root.pictureNumber
        hovered: root.hovered
        down: root.down
    }
    AppToolTip {
        text: root.help
        visible: root.hovered && !root.down
    }
}
