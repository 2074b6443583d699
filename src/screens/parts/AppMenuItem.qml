// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

// A row of a menu: a symbol where the menu has them, the words, the keys at the right.
T.MenuItem {
    id: root

    property string symbol: ""
    property string keys: ""
    // Not `visible`, which is false for every row of a menu that is closed.
    property bool offered: true

    implicitWidth: contentItem.implicitWidth
    implicitHeight: offered ? 32 : 0
    visible: offered
    hoverEnabled: true
    Accessible.role: Accessible.MenuItem
    Accessible.name: root.text
    Accessible.onPressAction: {
        root.triggered();
        root.menu.dismiss();
    }

    background: Rectangle {
        radius: 7
        color: root.highlighted ? Theme.accentFill : "transparent"
    }
    contentItem: AppMenuRow {
        symbol: root.symbol
        text: root.text
        keys: root.keys
        highlighted: root.highlighted
    }
}
