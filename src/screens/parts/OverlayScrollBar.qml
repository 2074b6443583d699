// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

// A scroll bar over the content: seen while scrolling and a moment after, wider under the pointer.
T.ScrollBar {
    id: root

    readonly property bool wide: hovered || pressed

    implicitWidth: 16
    padding: 3
    minimumSize: height > 0 ? Math.min(1, 36 / height) : 0
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    Accessible.ignored: true

    contentItem: Item {
        opacity: root.active && root.size < 1 ? 1 : 0

        Rectangle {
            anchors { top: parent.top; bottom: parent.bottom; right: parent.right }
            width: root.wide ? 10 : 6
            radius: width / 2
            color: Theme.thumb
        }
        Behavior on opacity {
            SequentialAnimation {
                // Shown at once, gone 800 ms after the last movement.
                PauseAnimation {
                    duration: root.active ? 0 : 800
                }
                NumberAnimation {
                    duration: Theme.quick
                }
            }
        }
    }
}
