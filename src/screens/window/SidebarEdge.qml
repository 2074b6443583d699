// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Velarin.Models

// The edge by which the sidebar is made wider or narrower.
Item {
    id: root

    required property WindowState windowState

    width: 7
    Accessible.ignored: true

    HoverHandler {
        cursorShape: Qt.SplitHCursor
    }
    DragHandler {
        id: drag

        property int before: 0

        target: null
        yAxis.enabled: false
        cursorShape: Qt.SplitHCursor
        onActiveChanged: if (active) before = root.windowState.sidebarWidth
        onTranslationChanged: if (active) root.windowState.sidebarWidth = before + Math.round(translation.x)
    }
}
