// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

// A raised list of commands, as wide as its widest row.
T.Menu {
    id: root

    property real rowsWidth: 168
    property real rowsHeight: 0

    // A list lays out its rows when it is shown; where the menu goes must be known before.
    function fit() {
        let width = 168;
        let height = 0;
        for (let row = 0; row < root.count; ++row) {
            width = Math.max(width, root.itemAt(row).implicitWidth);
            height += root.itemAt(row).implicitHeight;
        }
        root.rowsWidth = Math.ceil(width);
        root.rowsHeight = height;
    }
    function openAt(item: Item, x: real, y: real) {
        root.fit();
        root.popup(item, x, y);
    }
    // Right edges on one line.
    function openUnder(item: Item) {
        root.fit();
        root.popup(item, item.width - root.implicitWidth, item.height + 6);
    }
    function openAbove(item: Item) {
        root.fit();
        root.popup(item, item.width - root.implicitWidth, -root.implicitHeight - 8);
    }

    margins: 8
    padding: 6
    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    onCountChanged: if (visible) root.fit()

    contentItem: ListView {
        implicitWidth: root.rowsWidth
        implicitHeight: root.rowsHeight
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
