// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Velarin.Models
import Velarin.Parts

// Mute, the slider, and where the sound comes out.
Row {
    id: root

    required property PlayerBarModel bar
    required property OutputDevicesModel devices
    readonly property string help: qsTr("Volume")

    spacing: 8

    IconButton {
        anchors.verticalCenter: parent.verticalCenter
        help: root.help
        symbol: root.bar.face.volumeSymbol
        side: 28
        iconSide: 20
        onClicked: root.bar.toggleMute()
    }
    AppSlider {
        anchors.verticalCenter: parent.verticalCenter
        help: root.help
        value: root.bar.volume
        // Also what an assistive technology sets arrives here, which moved() does not tell.
        onValueChanged: root.bar.volume = value
    }
    OutputMenu {
        anchors.verticalCenter: parent.verticalCenter
        devices: root.devices
    }
}
