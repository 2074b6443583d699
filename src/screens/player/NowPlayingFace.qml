// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Velarin.Models
import Velarin.Parts

// The picture and the two lines of what plays.
Item {
    id: root

    required property barFace face
    required property int pictureNumber
    required property bool hovered
    required property bool down
    readonly property int artSide: 46
    readonly property int corner: 9
    readonly property bool twoLines: face.failed

    implicitWidth: artSide + 12 + Math.ceil(Math.max(title.implicitWidth, subtitle.implicitWidth))

    Item {
        id: art

        anchors.verticalCenter: parent.verticalCenter
        width: root.artSide
        height: root.artSide

        ShadowBox {
            visible: root.face.hasSource
            step: "bar"
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
            sourceSize.width: pixels
            sourceSize.height: pixels
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
        width: parent.width - x
        height: 18
        text: root.face.title
        font: Theme.bodyStrong
    }
    AppText {
        id: subtitle

        x: title.x
        y: title.y + title.height + (root.twoLines ? 0 : 2)
        width: title.width
        height: root.twoLines ? implicitHeight : 14
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
