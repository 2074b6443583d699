// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

// A raised list of commands, as wide as its widest row.
T.Menu {
    id: root

    // A menu takes its width from its rows only when it is told to.
    function widest(): real {
        let width = 0;
        for (let row = 0; row < root.count; ++row)
            width = Math.max(width, root.itemAt(row).implicitWidth);
        return width;
    }

    margins: 8
    padding: 6
    implicitWidth: Math.max(180, contentItem.implicitWidth + leftPadding + rightPadding)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    onAboutToShow: contentItem.implicitWidth = widest()

    contentItem: ListView {
        implicitHeight: contentHeight
        interactive: contentHeight > height
        clip: interactive
        model: root.contentModel
        currentIndex: root.currentIndex
        keyNavigationWraps: true
        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.title
    }
    background: Rectangle {
        radius: 14
        color: Theme.raised
        border { width: 1; color: Theme.popRing }

        ShadowBox {
            z: -1
            step: "pop"
            reach: 40
            corner: 14
        }
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.popIn; easing.type: Easing.OutCubic }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.popOut }
    }
}
