// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Velarin.Models
import Velarin.Parts

// The strip along the bottom of the window. The outer columns are equally wide, so that play stands on the window's axis.
FocusScope {
    id: root

    required property PlayerBarModel bar
    required property PlaybackCommands commands
    required property OutputDevicesModel devices
    readonly property int gap: 18
    readonly property real inner: width - 2 * gap
    readonly property real outerRoom: (inner - 2 * gap - 220) / 2
    // A failure's words get more room, where there is some.
    readonly property real wanted: bar.face.failed && width >= 1100 ? 380 : 300
    readonly property real outer: Math.max(220, Math.min(wanted, outerRoom))
    readonly property real center: Math.min(460, inner - 2 * outer - 2 * gap)
    readonly property int heartRoom: bar.face.showsHeart ? 8 + heart.width : 0
    readonly property int retryRoom: bar.face.failed ? 8 + retry.width : 0

    implicitHeight: Theme.barHeight

    Rectangle {
        anchors.fill: parent
        color: Theme.bar

        Rectangle {
            width: parent.width
            height: 1
            color: Theme.line
        }
    }
    NowPlayingButton {
        id: opener

        x: root.gap
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, root.outer - root.heartRoom - root.retryRoom)
        room: root.outer - root.heartRoom - root.retryRoom - 58
        face: root.bar.face
        pictureNumber: root.bar.pictureNumber
        focus: true
        onClicked: root.bar.openFullPlayer()
    }
    IconButton {
        id: heart

        anchors { left: opener.right; leftMargin: 8; verticalCenter: parent.verticalCenter }
        visible: root.bar.face.showsHeart
        help: root.bar.face.heartHelp
        symbol: root.bar.face.heartSymbol
        side: 28
        iconSide: 18
        ink: root.bar.face.favorite ? Theme.pink : Theme.text2
        strongInk: root.bar.face.favorite ? Theme.pink : Theme.text
        onClicked: root.bar.toggleFavorite()
    }
    IconButton {
        id: retry

        anchors { left: heart.right; leftMargin: 8; verticalCenter: parent.verticalCenter }
        visible: root.bar.face.failed
        help: qsTr("Riprova")
        symbol: "arrow.clockwise"
        side: 28
        ink: Theme.accentText
        strongInk: Theme.accentText
        ground: Theme.accentSoft
        onClicked: root.bar.retry()
    }
    Column {
        anchors.centerIn: parent
        width: root.center
        spacing: 4

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 20

            PlayButton {
                anchors.verticalCenter: parent.verticalCenter
                help: qsTr("Precedente")
                symbol: "backward.fill"
                enabled: root.bar.face.canSkip
                onClicked: root.commands.previous()
            }
            PlayButton {
                help: qsTr("Riproduci / Pausa")
                symbol: root.bar.face.playSymbol
                side: 32
                iconSide: 32
                waiting: root.bar.face.waiting
                onClicked: root.commands.toggle()
            }
            PlayButton {
                anchors.verticalCenter: parent.verticalCenter
                help: qsTr("Successiva")
                symbol: "forward.fill"
                enabled: root.bar.face.canSkip
                onClicked: root.commands.next()
            }
        }
        // Keeps its height while it is empty, so that nothing jumps when the sound comes.
        Item {
            width: parent.width
            height: 14

            Row {
                anchors.centerIn: parent
                spacing: 7
                visible: root.bar.face.live

                EqualizerBars {
                    anchors.bottom: parent.bottom
                    height: 12
                    running: root.bar.face.live
                }
                AppText {
                    height: 14
                    text: qsTr("In diretta")
                    font: Theme.caption
                    color: Theme.text2
                }
            }
        }
    }
    VolumeControl {
        anchors { right: parent.right; rightMargin: root.gap - 4; verticalCenter: parent.verticalCenter }
        bar: root.bar
        devices: root.devices
    }
}
