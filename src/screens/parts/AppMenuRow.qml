// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// What a row of a menu shows. The row itself speaks for it.
Item {
    id: root

    required property string symbol
    required property string text
    required property string keys
    required property bool highlighted
    readonly property int wordsAt: symbol === "" ? 12 : 38
    readonly property color ink: highlighted ? "#FFFFFF" : Theme.text

    implicitWidth: wordsAt + words.implicitWidth + (keys === "" ? 12 : 44) + hint.implicitWidth

    Icon {
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        symbol: root.symbol
        side: 15
        ink: root.highlighted ? root.ink : Theme.text2
    }
    AppText {
        id: words

        anchors { left: parent.left; leftMargin: root.wordsAt; right: hint.left }
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
