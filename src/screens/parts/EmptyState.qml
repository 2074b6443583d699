// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// What a page shows in place of a list that is empty.
Item {
    id: root

    required property string symbol
    required property string title
    property string text: ""

    implicitHeight: column.implicitHeight
    implicitWidth: 380

    Column {
        id: column

        x: (root.width - width) / 2
        // Somewhat above the middle, where the eye expects the middle.
        y: (root.height - height) * 0.45
        width: Math.min(380, root.width)
        spacing: 6

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 76
            height: 76
            radius: 38
            color: Theme.accentSoft

            Icon {
                anchors.centerIn: parent
                symbol: root.symbol
                side: 32
                ink: Theme.accentText
            }
        }
        Item {
            width: 1
            height: 8
        }
        AppText {
            width: parent.width
            text: root.title
            font: Theme.title2
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
        }
        AppText {
            width: parent.width
            visible: root.text !== ""
            text: root.text
            color: Theme.text2
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
        }
    }
}
