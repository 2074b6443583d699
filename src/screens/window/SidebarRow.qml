// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Velarin.Parts

// One place in the sidebar.
T.AbstractButton {
    id: root

    required property string place
    required property string label
    required property string symbol
    required property string selection
    readonly property bool selected: selection === place
    readonly property bool focusShown: ListView.isCurrentItem && visualFocus

    implicitHeight: 34
    hoverEnabled: true
    focusPolicy: Qt.ClickFocus
    text: label
    Accessible.role: Accessible.ListItem
    Accessible.name: root.label
    Accessible.selectable: true
    Accessible.selected: root.selected
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()

    background: Rectangle {
        radius: 8
        color: root.down ? Theme.press : root.selected ? Theme.accentSoft : root.hovered ? Theme.hover : "transparent"

        FocusRing {
            visible: root.focusShown
        }
    }
    contentItem: Item {
        Icon {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            symbol: root.symbol
            ink: root.selected ? Theme.accentText : Theme.text2
        }
        AppText {
            anchors { left: parent.left; leftMargin: 36; right: parent.right; rightMargin: 10 }
            height: parent.height
            text: root.label
            font: root.selected ? Theme.bodyStrong : Theme.bodyMedium
            Accessible.ignored: true
        }
    }
}
