// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

// A row of a menu: a symbol where the menu has them, the words, the keys at the right.
T.MenuItem {
    id: root

    property string symbol: ""
    property string keys: ""
    readonly property color ink: highlighted ? "#FFFFFF" : Theme.text

    implicitWidth: 24 + (symbol === "" ? 0 : 26) + words.implicitWidth + (keys === "" ? 0 : 32 + hint.implicitWidth)
    implicitHeight: visible ? 32 : 0
    hoverEnabled: true
    Accessible.role: Accessible.MenuItem
    Accessible.name: root.text
    Accessible.onPressAction: {
        root.triggered();
        root.menu.dismiss();
    }

    background: Rectangle {
        radius: 7
        color: root.highlighted ? Theme.accentFill : "transparent"
    }
    contentItem: Item {
        Icon {
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            symbol: root.symbol
            side: 15
            ink: root.highlighted ? root.ink : Theme.text2
        }
        AppText {
            id: words

            anchors { left: parent.left; leftMargin: root.symbol === "" ? 12 : 38; right: hint.left; rightMargin: 12 }
            height: parent.height
            text: root.text
            color: root.ink
            Accessible.ignored: true
        }
        AppText {
            id: hint

            anchors { right: parent.right; rightMargin: 12 }
            height: parent.height
            text: root.keys
            font: Theme.foot
            color: root.highlighted ? root.ink : Theme.text2
            Accessible.ignored: true
        }
    }
}
