// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Velarin.Models
import Velarin.Parts

// What plays: its picture, its title, its second line. A click opens the large player.
T.AbstractButton {
    id: root

    required property barFace face
    required property int pictureNumber
    // The room for the words, in pixels.
    required property real room
    readonly property string help: qsTr("Apri il player grande")
    readonly property int artSide: 46
    readonly property int corner: 9
    readonly property bool twoLines: face.failed

    implicitWidth: artSide + 12 + Math.min(room, Math.max(title.implicitWidth, subtitle.implicitWidth))
    implicitHeight: 54
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: root.help
    Accessible.description: root.face.title + ", " + root.face.subtitle
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: FocusRing {
        corner: root.corner
        visible: root.visualFocus
    }
    contentItem: Item {
        Item {
            id: art

            anchors.verticalCenter: parent.verticalCenter
            width: root.artSide
            height: root.artSide

            ShadowBox {
                visible: root.face.hasSource
                step: "bar"
                reach: 2
                corner: root.corner
            }
            Rectangle {
                anchors.fill: parent
                radius: root.corner
                color: Theme.plate
                visible: !root.face.hasSource

                Icon {
                    anchors.centerIn: parent
                    symbol: "dot.radiowaves.left.and.right"
                    side: 20
                }
            }
            MonogramImage {
                anchors.fill: parent
                visible: root.face.hasSource && root.pictureNumber === 0
                name: root.face.title
                corner: root.corner
            }
            Image {
                anchors.fill: parent
                visible: root.face.hasSource && root.pictureNumber > 0
                readonly property int pixels: Math.round(root.artSide * Screen.devicePixelRatio)
                source: root.pictureNumber === 0 ? "" : "image://playing/" + root.pictureNumber + "/"
                    + Math.round(root.corner * Screen.devicePixelRatio)
                sourceSize: Qt.size(pixels, pixels)
                Accessible.ignored: true
            }
            Rectangle {
                anchors.fill: parent
                radius: root.corner
                color: root.down ? "#38000000" : "#1C000000"
                visible: root.hovered
            }
        }
        AppText {
            id: title

            x: root.artSide + 12
            y: (parent.height - height - 2 - subtitle.height) / 2
            width: root.width - x
            height: 18
            text: root.face.title
            font: Theme.bodyStrong
        }
        AppText {
            id: subtitle

            x: title.x
            y: title.y + title.height + (root.twoLines ? 0 : 2)
            width: title.width
            height: root.twoLines && lineCount > 1 ? 28 : 14
            text: root.face.subtitle
            font: Theme.caption
            color: root.face.failed ? Theme.red : Theme.text2
            // The cause of a failure is readable without opening anything.
            wrapMode: root.twoLines ? Text.WordWrap : Text.NoWrap
            maximumLineCount: root.twoLines ? 2 : 1
            lineHeight: 14
            lineHeightMode: Text.FixedHeight
        }
    }
    AppToolTip {
        text: root.help
        visible: root.hovered && !root.down
    }
}
