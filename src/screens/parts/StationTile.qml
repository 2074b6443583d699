// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// A station: its picture, its name, a second line. The picture alone grows under the pointer; text under scaling goes
// soft.
Item {
    id: root

    required property string name
    required property string subtitle
    required property string spoken
    required property bool favorite
    required property bool current
    required property bool airing
    // The keyboard is on this tile.
    property bool focusShown: false
    readonly property bool hovered: hover.hovered
    readonly property bool lifted: hovered && !Theme.reducedMotion
    readonly property bool awake: hovered || focusShown

    signal pressed()
    signal played()
    signal favoriteToggled()
    signal menuRequested(real x, real y)

    implicitHeight: width + 41
    Accessible.role: Accessible.Button
    Accessible.name: root.spoken
    Accessible.focusable: true
    Accessible.focused: root.focusShown
    Accessible.onPressAction: root.played()

    Item {
        id: art

        width: root.width
        height: width
        scale: tap.pressed ? 0.985 : root.lifted ? 1.025 : 1

        Behavior on scale {
            NumberAnimation { duration: Theme.tileScale; easing.type: Easing.OutCubic }
        }
        ShadowBox {
            step: "art"
            corner: picture.visibleCorner
        }
        MonogramImage {
            id: picture

            anchors.fill: parent
            name: root.name
        }
        Rectangle {
            anchors.fill: parent
            radius: picture.visibleCorner
            color: Theme.dim
            opacity: root.hovered ? 1 : 0

            Behavior on opacity {
                NumberAnimation { duration: Theme.quick; easing.type: Easing.OutQuad }
            }
        }
        FocusRing {
            corner: picture.visibleCorner
            visible: root.focusShown
        }
    }
    // What lies on the picture does not grow with it: it would lose its sharp edges.
    Rectangle {
        anchors.centerIn: art
        width: 44
        height: 44
        radius: 22
        color: "#FFFFFF"
        visible: root.hovered

        Icon {
            anchors.centerIn: parent
            // The triangle's middle lies left of its box's.
            anchors.horizontalCenterOffset: 1
            symbol: "play.fill"
            side: 26
            ink: Theme.glyphOnWhite
        }
    }
    Rectangle {
        anchors { right: art.right; bottom: art.bottom; margins: 7 }
        width: 32
        height: 26
        radius: 8
        color: Theme.overlay
        visible: root.airing

        EqualizerBars {
            anchors.centerIn: parent
            height: 14
            barWidth: 3
            color: "#FFFFFF"
            running: root.airing
        }
    }
    AppText {
        y: root.width + 8
        width: root.width
        height: 17
        text: root.name
        font: Theme.bodyStrong
        color: root.current ? Theme.accentText : Theme.text
        Accessible.ignored: true
    }
    AppText {
        y: root.width + 25
        width: root.width
        height: 16
        text: root.subtitle
        font: Theme.foot
        color: Theme.text2
        Accessible.ignored: true
    }
    HoverHandler {
        id: hover
    }
    TapHandler {
        id: tap

        acceptedButtons: Qt.LeftButton
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onPressedChanged: if (pressed) root.pressed()
        onTapped: root.played()
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => root.menuRequested(eventPoint.position.x, eventPoint.position.y)
    }
    TileHeart {
        x: root.width - width - 7
        y: 7
        station: root.name
        favorite: root.favorite
        awake: root.awake
        onToggled: root.favoriteToggled()
    }
}
