// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Velarin.Models
import Velarin.Parts

// The button at the end of every page head, and the commands of the program.
IconButton {
    id: root

    required property PlaybackCommands commands

    signal quitRequested()

    function open() {
        menu.openUnder(root);
    }

    help: qsTr("Menu")
    symbol: "menu"
    menuOpen: menu.visible
    onClicked: root.open()

    AppMenu {
        id: menu

        title: root.help

        AppMenuItem {
            text: qsTr("Riproduci / Pausa")
            keys: qsTr("Ctrl P")
            onTriggered: root.commands.toggle()
        }
        AppMenuItem {
            text: qsTr("Successiva")
            keys: qsTr("Ctrl →")
            onTriggered: root.commands.next()
        }
        AppMenuItem {
            text: qsTr("Precedente")
            keys: qsTr("Ctrl ←")
            onTriggered: root.commands.previous()
        }
        AppMenuLine {}
        AppMenuItem {
            text: qsTr("Aggiungi ai preferiti")
            keys: qsTr("Ctrl D")
            onTriggered: root.commands.toggleFavorite()
        }
        AppMenuLine {}
        AppMenuItem {
            text: qsTr("Alza il volume")
            keys: qsTr("Ctrl ↑")
            onTriggered: root.commands.louder()
        }
        AppMenuItem {
            text: qsTr("Abbassa il volume")
            keys: qsTr("Ctrl ↓")
            onTriggered: root.commands.quieter()
        }
        AppMenuLine {}
        AppMenuItem {
            text: qsTr("Esci")
            keys: qsTr("Ctrl Q")
            onTriggered: root.quitRequested()
        }
    }
}
