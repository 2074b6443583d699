// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Velarin.Parts

// One of the transport buttons: no ground, a disc under the pointer, smaller while it is pressed. Play wears an arc while
// sound has been asked for and is not there yet.
T.AbstractButton {
    id: root

    required property string help
    required property string symbol
    property int side: 28
    property int iconSide: 20
    property bool waiting: false

    implicitWidth: side
    implicitHeight: side
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.34
    Accessible.role: Accessible.Button
    Accessible.name: root.help
    Accessible.onPressAction: if (root.enabled) root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: Rectangle {
        radius: root.side / 2
        color: Theme.hover
        // Play is a disc already: its own grows a rim.
        anchors.fill: parent
        anchors.margins: root.iconSide === root.side ? -4 : 0
        visible: root.hovered && root.enabled
    }
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            symbol: root.symbol
            side: root.iconSide
            ink: Theme.text
            scale: root.down && !Theme.reducedMotion ? 0.92 : 1
        }
        Spinner {
            anchors.centerIn: parent
            side: root.side + 8
            visible: root.waiting
        }
        FocusRing {
            corner: root.side / 2 + 1
            visible: root.visualFocus
        }
    }
    AppToolTip {
        text: root.help
        visible: root.hovered && !root.down
    }
}
