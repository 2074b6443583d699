// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Velarin.Italy
import Velarin.Models
import Velarin.Parts
import Velarin.Player

// The one main window: the sidebar, the page of the selected place, the player bar along the bottom. Closing it hides it:
// the program goes on playing.
Window {
    id: root

    required property AppearanceModel appearance
    required property WindowState windowState
    required property SidebarModel sidebar
    required property PlaybackCommands commands
    required property OutputDevicesModel devices
    required property ItalyModel italy
    required property PlayerBarModel bar
    readonly property list<Item> areas: [places, page.headArea, page.contentArea, playerBar]

    signal quitRequested()

    // Puts the keyboard into the next area of the window, or the one before.
    function stepArea(step: int) {
        let from = -1;
        for (let area = 0; area < root.areas.length; ++area) {
            if (root.areas[area].activeFocus)
                from = area;
        }
        const to = (from + step + root.areas.length) % root.areas.length;
        root.areas[from < 0 ? 0 : to].forceActiveFocus(Qt.TabFocusReason);
    }

    title: qsTr("Velarin")
    color: Theme.bgBottom
    onClosing: close => {
        close.accepted = false;
        root.hide();
    }

    Binding {
        target: Theme
        property: "dark"
        value: root.appearance.dark
    }
    Binding {
        target: Theme
        property: "reducedMotion"
        value: root.appearance.reducedMotion
    }
    Binding {
        target: Theme
        property: "highContrast"
        value: root.appearance.highContrast
    }
    CommandKeys {
        commands: root.commands
        onQuitRequested: root.quitRequested()
        onMenuRequested: menuButton.open()
        onNextAreaRequested: root.stepArea(1)
        onPreviousAreaRequested: root.stepArea(-1)
    }
    Sidebar {
        id: places

        anchors { left: parent.left; top: parent.top; bottom: playerBar.top }
        width: root.windowState.sidebarWidth
        sidebar: root.sidebar
    }
    Rectangle {
        anchors { left: places.right; right: parent.right; top: parent.top; bottom: playerBar.top }
        gradient: Gradient {
            GradientStop { position: 0; color: Theme.bgTop }
            GradientStop { position: 1; color: Theme.bgBottom }
        }
    }
    ItalyPage {
        id: page

        anchors { left: places.right; right: parent.right; top: parent.top; bottom: playerBar.top }
        italy: root.italy
        focus: true
        menu: CommandMenu {
            id: menuButton

            objectName: "menuButton"

            commands: root.commands
            focus: true
            onQuitRequested: root.quitRequested()
        }
    }
    SidebarEdge {
        anchors { top: parent.top; bottom: playerBar.top }
        x: places.width - 3
        windowState: root.windowState
    }
    PlayerBar {
        id: playerBar

        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        bar: root.bar
        commands: root.commands
        devices: root.devices
    }
}
