// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Velarin.Models
import Velarin.Parts

// The Italian stations.
FocusScope {
    id: root

    required property ItalyModel italy
    property alias menu: head.controls
    readonly property Item headArea: head
    readonly property Item contentArea: grid

    StationGrid {
        id: grid

        anchors { left: parent.left; right: parent.right; top: head.bottom; bottom: parent.bottom }
        stations: root.italy.stations
        visible: count > 0
        focus: true
    }
    PageHead {
        id: head

        width: parent.width
        title: root.italy.title
        subtitle: root.italy.subtitle
        scrolled: !grid.atYBeginning
    }
    Spinner {
        anchors.horizontalCenter: parent.horizontalCenter
        y: head.height + (parent.height - head.height - height) * 0.45
        visible: !root.italy.loaded
    }
    EmptyState {
        anchors { left: parent.left; right: parent.right; top: head.bottom; bottom: parent.bottom }
        visible: root.italy.loaded && grid.count === 0
        symbol: "dot.radiowaves.left.and.right"
        title: qsTr("Nessuna radio qui")
    }
}
