// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// The head of a page: title over subtitle at the left, controls at the right. It is bare until content has been scrolled
// beneath it.
FocusScope {
    id: root

    required property string title
    property string subtitle: ""
    property bool scrolled: false
    default property alias controls: row.data

    implicitHeight: Theme.headHeight

    Rectangle {
        anchors.fill: parent
        visible: root.scrolled
        color: Theme.bgTop

        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: 1
            color: Theme.line
        }
    }
    Column {
        anchors { left: parent.left; leftMargin: Theme.gutter; right: row.left; rightMargin: 16 }
        anchors.verticalCenter: parent.verticalCenter

        AppText {
            width: parent.width
            text: root.title
            font: Theme.title
            height: 30
            Accessible.role: Accessible.Heading
        }
        AppText {
            width: parent.width
            height: 16
            visible: text !== ""
            text: root.subtitle
            color: Theme.text2
            font: Theme.foot
        }
    }
    Row {
        id: row

        anchors { right: parent.right; rightMargin: Theme.gutter; verticalCenter: parent.verticalCenter }
        spacing: 8
    }
}
