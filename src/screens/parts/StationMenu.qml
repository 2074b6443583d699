// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// What can be done with a station besides playing it.
AppMenu {
    id: root

    property int row: -1
    property bool favorite: false
    property bool hasHomepage: false

    signal playRequested(int row)
    signal favoriteRequested(int row)
    signal homepageRequested(int row)

    title: qsTr("Radio")

    AppMenuItem {
        text: qsTr("Riproduci")
        symbol: "play.fill"
        onTriggered: root.playRequested(root.row)
    }
    AppMenuItem {
        text: root.favorite ? qsTr("Rimuovi dai preferiti") : qsTr("Aggiungi ai preferiti")
        symbol: root.favorite ? "heart.slash" : "heart"
        onTriggered: root.favoriteRequested(root.row)
    }
    AppMenuItem {
        offered: root.hasHomepage
        text: qsTr("Sito della radio")
        symbol: "safari"
        onTriggered: root.homepageRequested(root.row)
    }
}
