// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// The ring round what the keyboard is on: 2 pixels, 2 pixels away.
Rectangle {
    property int corner: 8

    anchors.fill: parent
    anchors.margins: -4
    radius: corner + 3
    color: "transparent"
    border { width: 2; color: Theme.accent }
    Accessible.ignored: true
}
