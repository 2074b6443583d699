// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

// A thin slider; the wheel and the arrow keys move it too.
T.Slider {
    id: root

    required property string help
    property int knobSide: 12
    readonly property int shownKnob: hovered || pressed ? knobSide + 2 : knobSide

    implicitWidth: 92
    implicitHeight: 28
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    wheelEnabled: true
    stepSize: 0.05
    opacity: enabled ? 1 : 0.42
    Accessible.role: Accessible.Slider
    Accessible.name: root.help

    background: Rectangle {
        y: (root.height - height) / 2
        width: root.width
        height: 4
        radius: 2
        color: Theme.track

        Rectangle {
            visible: root.visualPosition > 0
            width: root.handle.x + root.handle.width / 2
            height: parent.height
            radius: 2
            color: Theme.accent
        }
    }
    handle: Rectangle {
        x: root.visualPosition * (root.width - root.knobSide) + (root.knobSide - width) / 2
        y: (root.height - height) / 2
        width: root.shownKnob
        height: root.shownKnob
        radius: width / 2
        color: Theme.knob
        border { width: Theme.dark ? 0 : 1; color: Theme.knobEdge }

        FocusRing {
            corner: root.shownKnob / 2 + 1
            visible: root.visualFocus
        }
    }
}
