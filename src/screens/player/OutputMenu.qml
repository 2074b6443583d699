// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQml.Models
import Velarin.Models
import Velarin.Parts

// The button that chooses where the sound comes out, and its menu.
IconButton {
    id: root

    required property OutputDevicesModel devices

    objectName: "outputMenu"
    help: qsTr("AirPlay")
    symbol: "output"
    side: 28
    iconSide: 20
    menuOpen: menu.visible
    onClicked: {
        // A second click on the button closes what the press has closed already.
        if (menu.closedAt + 200 > Date.now())
            return;
        // Before it opens, so that it opens at its full height.
        root.devices.open();
        menu.openAbove(root);
    }

    AppMenu {
        id: menu

        property double closedAt: 0

        title: root.help
        onClosed: {
            closedAt = Date.now();
            root.devices.close();
        }

        Instantiator {
            model: root.devices
            delegate: AppMenuItem {
                required property int index
                required property string name
                required property bool chosen

                text: name
                symbol: chosen ? "checkmark" : "blank"
                onTriggered: root.devices.choose(index)
            }
            onObjectAdded: (index, object) => menu.insertItem(index, object as AppMenuItem)
            onObjectRemoved: (index, object) => menu.removeItem(object as AppMenuItem)
        }
    }
}
