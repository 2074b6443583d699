// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

// A button that is only an icon; its help text is its name.
T.AbstractButton {
    id: root

    required property string help
    required property string symbol
    property int side: 34
    property int iconSide: 16
    property color ink: Theme.text2
    property color strongInk: Theme.text
    property color ground: "transparent"
    property bool round: false
    property bool menuOpen: false
    readonly property int corner: round ? side / 2 : 8

    implicitWidth: side
    implicitHeight: side
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.38
    Accessible.role: Accessible.Button
    Accessible.name: root.help
    Accessible.onPressAction: root.clicked()
    // Space is the button's own key.
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: Rectangle {
        radius: root.corner
        color: root.ground

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: root.down || root.menuOpen ? Theme.press : Theme.hover
            visible: root.down || root.menuOpen || root.hovered
        }
        FocusRing {
            corner: root.corner
            visible: root.visualFocus
        }
    }
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            symbol: root.symbol
            side: root.iconSide
            ink: root.hovered || root.down || root.menuOpen ? root.strongInk : root.ink
        }
    }
    AppToolTip {
        text: root.help
        visible: root.hovered && !root.down && !root.menuOpen
    }
}
