// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

// A line between the rows of a menu.
T.MenuSeparator {
    implicitWidth: 24
    implicitHeight: 11
    Accessible.ignored: true

    contentItem: Item {
        Rectangle {
            anchors { left: parent.left; right: parent.right; leftMargin: 12; rightMargin: 12 }
            anchors.verticalCenter: parent.verticalCenter
            height: 1
            color: Theme.line
        }
    }
}
