// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Velarin.Models

// The stations of a list as tiles, as many columns as fit. One stop of the keyboard: arrows, Home and End move, letters
// jump by name, Enter or Space plays.
GridView {
    id: root

    required property StationListModel stations
    readonly property int gap: 16
    readonly property int narrowest: 132
    readonly property int greatest: 190
    readonly property real inner: width - 2 * Theme.gutter
    readonly property int columns: Math.max(1, Math.floor((inner + gap) / (narrowest + gap)))
    readonly property real tileSide: Math.min(greatest, (inner - gap * (columns - 1)) / columns)
    property bool byKeyboard: false
    property string typed: ""

    function showMenu(cell: GridCell, x: real, y: real) {
        menu.row = cell.index;
        menu.favorite = cell.favorite;
        menu.hasHomepage = cell.hasHomepage;
        menu.openAt(cell, x, y);
    }
    function showMenuOfCurrent() {
        const cell = root.currentItem as GridCell;
        if (cell)
            root.showMenu(cell, Theme.gutter, root.tileSide / 2);
    }
    function jump(letters: string) {
        root.typed += letters;
        forget.restart();
        // A word that grows may stay where it is; a new letter goes on to the next name.
        const row = root.stations.rowBeginningWith(root.typed, root.currentIndex - (root.typed.length > 1 ? 1 : 0));
        if (row >= 0)
            root.currentIndex = row;
    }
    function moveTo(row: int) {
        root.currentIndex = Math.max(0, Math.min(root.count - 1, row));
    }

    model: stations
    cellWidth: tileSide + gap
    cellHeight: Math.round(tileSide) + 57
    topMargin: 6
    bottomMargin: 8
    clip: true
    activeFocusOnTab: true
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    cacheBuffer: 400
    reuseItems: true
    currentIndex: -1
    highlightMoveDuration: 0
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Elenco delle radio")

    onActiveFocusChanged: if (activeFocus && currentIndex < 0 && count > 0) currentIndex = 0
    Keys.onPressed: event => {
        root.byKeyboard = true;
        switch (event.key) {
        case Qt.Key_Return:
        case Qt.Key_Enter:
            root.stations.play(root.currentIndex);
            break;
        case Qt.Key_Space:
            if (root.typed === "")
                root.stations.play(root.currentIndex);
            else
                root.jump(" ");
            break;
        case Qt.Key_Home:
            root.moveTo(0);
            break;
        case Qt.Key_End:
            root.moveTo(root.count - 1);
            break;
        case Qt.Key_PageUp:
            root.moveTo(root.currentIndex - root.columns * Math.floor(root.height / root.cellHeight));
            break;
        case Qt.Key_PageDown:
            root.moveTo(root.currentIndex + root.columns * Math.floor(root.height / root.cellHeight));
            break;
        case Qt.Key_Menu:
            root.showMenuOfCurrent();
            break;
        case Qt.Key_F10:
            if (!(event.modifiers & Qt.ShiftModifier))
                return;
            root.showMenuOfCurrent();
            break;
        default:
            if (event.text.trim() === "" || event.modifiers & (Qt.ControlModifier | Qt.AltModifier))
                return;
            root.jump(event.text);
        }
        event.accepted = true;
    }

    delegate: GridCell {
        width: root.cellWidth
        height: root.cellHeight
        tileSide: Math.round(root.tileSide)
        focusShown: root.activeFocus && root.byKeyboard && root.currentIndex === index
        onPressed: {
            root.byKeyboard = false;
            root.currentIndex = index;
            root.forceActiveFocus(Qt.MouseFocusReason);
        }
        onPlayed: root.stations.play(index)
        onFavoriteToggled: root.stations.toggleFavorite(index)
        onMenuRequested: (x, y) => root.showMenu(this, x, y)
    }

    // What was typed counts as one word until there is a pause.
    Timer {
        id: forget

        interval: 900
        onTriggered: root.typed = ""
    }
    StationMenu {
        id: menu

        onPlayRequested: row => root.stations.play(row)
        onFavoriteRequested: row => root.stations.toggleFavorite(row)
        onHomepageRequested: row => root.stations.openHomepage(row)
    }
    T.ScrollBar.vertical: OverlayScrollBar {}
}
