// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Velarin.Models
import Velarin.Parts

// The places of the program under their headings. One stop of the keyboard.
FocusScope {
    id: root

    required property SidebarModel sidebar
    readonly property int margin: 14

    Rectangle {
        anchors.fill: parent
        color: Theme.sidebar

        Rectangle {
            anchors.right: parent.right
            width: 1
            height: parent.height
            color: Theme.line
        }
    }
    ListView {
        id: list

        anchors { fill: parent; leftMargin: root.margin; rightMargin: root.margin; topMargin: 16; bottomMargin: 8 }
        model: root.sidebar
        spacing: 2
        boundsBehavior: Flickable.StopAtBounds
        focus: true
        activeFocusOnTab: true
        currentIndex: 0
        highlightMoveDuration: 0
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Luoghi")
        Keys.onReturnPressed: root.sidebar.selection = (currentItem as SidebarRow).place
        Keys.onEnterPressed: root.sidebar.selection = (currentItem as SidebarRow).place
        Keys.onSpacePressed: root.sidebar.selection = (currentItem as SidebarRow).place

        delegate: SidebarRow {
            selection: root.sidebar.selection
            width: list.width
            onChosen: root.sidebar.selection = place
        }
    }
}
