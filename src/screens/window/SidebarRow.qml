// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Velarin.Parts

// One place in the sidebar, under the heading of its group if it is the first of it.
Item {
    id: root

    required property string place
    required property string heading
    required property string label
    required property string symbol
    required property string selection
    readonly property bool selected: selection === place
    readonly property bool focusShown: ListView.isCurrentItem && ListView.view.activeFocus

    signal chosen()

    implicitHeight: button.y + button.height

    AppText {
        id: title

        x: 10
        width: parent.width - 20
        height: root.heading === "" ? 0 : 30
        visible: height > 0
        bottomPadding: 7
        text: root.heading
        font: Theme.captionStrong
        color: Theme.text2
        verticalAlignment: Text.AlignBottom
        Accessible.role: Accessible.Heading
    }
    Rectangle {
        id: button

        y: title.height
        width: parent.width
        height: 34
        radius: 8
        color: tap.pressed ? Theme.press : root.selected ? Theme.accentSoft
            : hover.hovered ? Theme.hover : "transparent"
        Accessible.role: Accessible.ListItem
        Accessible.name: root.label
        Accessible.selectable: true
        Accessible.selected: root.selected
        Accessible.focusable: true
        Accessible.focused: root.focusShown
        Accessible.onPressAction: root.chosen()

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
        FocusRing {
            visible: root.focusShown
        }
        HoverHandler {
            id: hover
        }
        TapHandler {
            id: tap

            onTapped: root.chosen()
        }
    }
}
