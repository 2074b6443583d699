// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtTest
import Velarin.Parts

Item {
    id: root

    width: 400
    height: 300

    IconButton {
        id: button

        property int clicks: 0

        x: 20
        y: 20
        help: "Volume"
        symbol: "speaker.fill"
        onClicked: ++clicks
    }
    AppSlider {
        id: slider

        x: 20
        y: 80
        help: "Volume"
    }
    EqualizerBars {
        id: bars

        x: 20
        y: 140
        height: 20
    }
    StationTile {
        id: tile

        property int plays: 0
        property int hearts: 0
        property int menus: 0

        x: 200
        y: 20
        width: 140
        name: "Radio Uno"
        subtitle: "Pop"
        spoken: "Radio Uno, Pop"
        favorite: false
        current: false
        airing: false
        onPlayed: ++plays
        onFavoriteToggled: ++hearts
        onMenuRequested: ++menus
    }

    TestCase {
        name: "Parts"
        when: windowShown

        function init() {
            Theme.reducedMotion = false;
            button.clicks = 0;
            tile.plays = 0;
            tile.hearts = 0;
            button.enabled = true;
        }

        function test_aButtonIsPressedByMouseSpaceAndEnter() {
            mouseClick(button);
            compare(button.clicks, 1);
            slider.forceActiveFocus(Qt.TabFocusReason);
            button.forceActiveFocus(Qt.TabFocusReason);
            verify(button.visualFocus);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            compare(button.clicks, 3);
        }
        function test_aButtonThatIsOffIsNotPressed() {
            button.enabled = false;
            mouseClick(button);
            compare(button.clicks, 0);
        }
        function test_aSliderMovesByKeysAndWheel() {
            slider.value = 0.5;
            slider.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Right);
            fuzzyCompare(slider.value, 0.55, 0.001);
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_Left);
            fuzzyCompare(slider.value, 0.45, 0.001);
        }
        function test_theBarsFollowTheClock() {
            bars.time = 0;
            fuzzyCompare(bars.share(0), 0.35, 0.0001);
            fuzzyCompare(bars.share(2), 0.35 + 0.65 * Math.abs(Math.sin(2.6)), 0.0001);
            bars.time = 100;
            fuzzyCompare(bars.share(3), 0.35 + 0.65 * Math.abs(Math.sin(3.9 + 3.95 * 100)), 0.0001);
        }
        function test_theBarsStandStillWhereNoMovementIsWished() {
            Theme.reducedMotion = true;
            compare(bars.share(0), 0.55);
            compare(bars.share(3), 0.4);
        }
        function test_theBarsRestWhileNobodySeesThem() {
            bars.running = true;
            verify(bars.seen);
            bars.visible = false;
            verify(!bars.seen);
            bars.visible = true;
            bars.running = false;
            verify(!bars.seen);
        }
        function test_aTilePlaysAndItsHeartDoesNot() {
            mouseClick(tile, 70, 70);
            compare(tile.plays, 1);
            mouseClick(tile, 120, 20);
            compare(tile.hearts, 1);
            compare(tile.plays, 1);
        }
        function test_theOtherButtonOpensTheMenu() {
            tile.menus = 0;
            mouseClick(tile, 70, 70, Qt.RightButton);
            compare(tile.menus, 1);
            compare(tile.plays, 0);
        }
        function test_everySchemeHasItsOwnInk() {
            Theme.dark = true;
            const night = String(Theme.text);
            Theme.dark = false;
            verify(String(Theme.text) !== night);
            Theme.highContrast = true;
            compare(String(Theme.text2), String(Theme.text));
            Theme.highContrast = false;
            Theme.dark = true;
        }
    }
}
