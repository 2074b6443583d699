// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick

// Four bars that move with the clock alone: no level is measured anywhere. They are drawn ten times a second, only while
// somebody can see them, and stand still where the desktop wishes no movement.
Item {
    id: root

    property color color: Theme.accent
    property real barWidth: 3
    property bool running: true
    readonly property bool seen: running && visible && Window.visibility !== Window.Hidden
        && Window.visibility !== Window.Minimized
    // Seconds since the first moment of 2001.
    property real time: 0
    readonly property var still: [0.55, 0.9, 0.7, 0.4]

    function share(bar: int): real {
        if (Theme.reducedMotion)
            return root.still[bar];
        return 0.35 + 0.65 * Math.abs(Math.sin(1.3 * bar + (0.45 * bar + 2.6) * root.time));
    }
    function tick() {
        root.time = Date.now() / 1000 - 978307200;
    }

    implicitWidth: barWidth * (4 + 3 * 0.7)
    implicitHeight: 14
    Accessible.ignored: true

    Timer {
        interval: 100
        repeat: true
        running: root.seen && !Theme.reducedMotion
        triggeredOnStart: true
        onTriggered: root.tick()
    }
    Repeater {
        model: 4
        delegate: Rectangle {
            required property int index

            // On whole pixels, so that the four stand on one edge.
            x: Math.round(index * 1.7 * root.barWidth)
            y: root.height - height
            width: root.barWidth
            height: Math.round(root.height * root.share(index))
            radius: root.barWidth / 2
            color: root.color
        }
    }
}
