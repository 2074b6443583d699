// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

// A word of help under the pointer.
T.ToolTip {
    id: root

    delay: 600
    timeout: 8000
    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: -implicitHeight - 6
    margins: 6
    padding: 8
    topPadding: 5
    bottomPadding: 5
    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: AppText {
        text: root.text
        color: Theme.tooltipText
        font: Theme.foot
        // The control says it already.
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: 7
        color: Theme.tooltip
    }
}
