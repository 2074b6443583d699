// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick

// Every colour, font and measure of the screens. The main window tells it what the user and the desktop wish.
QtObject {
    id: root

    property bool dark: true
    property bool reducedMotion: false
    property bool highContrast: false

    // Grounds.
    readonly property color bgTop: dark ? "#101A30" : "#E9F1FF"
    readonly property color bgBottom: dark ? "#0A0F1C" : "#F7FAFF"
    readonly property color sidebar: dark ? "#0C1425" : "#E0E9F8"
    readonly property color bar: dark ? "#131D34" : "#FCFDFF"
    readonly property color raised: dark ? "#1C2740" : "#FFFFFF"
    readonly property color card: highContrast ? raised : dark ? "#0EFFFFFF" : "#C7FFFFFF"
    readonly property color hover: dark ? "#12FFFFFF" : "#0F0D2E6B"
    readonly property color press: dark ? "#1FFFFFFF" : "#1C0D2E6B"
    readonly property color tooltip: dark ? "#2B3855" : "#1B2640"
    readonly property color tooltipText: "#F2F5FB"

    // Lines.
    readonly property color controlLine: dark ? "#61FFFFFF" : "#750D2E6B"
    readonly property color line: highContrast ? controlLine : dark ? "#13FFFFFF" : "#1A0D2E6B"
    readonly property color popRing: dark ? "#12FFFFFF" : "#1A0D2E6B"

    // Ink.
    readonly property color text: dark ? "#F2F5FB" : "#0F1A2E"
    readonly property color text2: highContrast ? text : dark ? "#AEB9CC" : "#48566F"
    readonly property color text3: dark ? "#9AA6BD" : "#54627B"

    // The three colours that speak, and the plates.
    readonly property color accent: dark ? "#5B9BFF" : "#2F7CFF"
    readonly property color accentText: dark ? "#7DB0FF" : "#1858C8"
    readonly property color accentFill: "#2369E6"
    readonly property color accentSoft: dark ? "#2B5B9BFF" : "#212F7CFF"
    readonly property color red: dark ? "#FF8A80" : "#BC2118"
    readonly property color pink: dark ? "#FF6FA3" : "#C9185B"
    readonly property color pinkOnArtwork: "#FF7FAD"
    readonly property color plate: dark ? "#24AEB9CC" : "#2448566F"
    readonly property color overlay: "#9E080D1A"
    readonly property color dim: "#57000000"
    readonly property color glyphOnWhite: "#0A1020"
    readonly property color track: dark ? "#33FFFFFF" : "#330D2E6B"
    readonly property color thumb: dark ? "#42FFFFFF" : "#470D2E6B"
    // The knob of a slider, and its edge where the ground is as light as it is.
    readonly property color knob: "#FFFFFF"
    readonly property color knobEdge: dark ? "#00000000" : "#4D0D2E6B"

    // Inter where it is installed; its display cut from 16 pixels up. Without it the desktop's own font, unspaced.
    readonly property FontMetrics desktopFont: FontMetrics {}
    readonly property var families: Qt.fontFamilies()
    readonly property bool hasInter: families.indexOf("Inter") >= 0
    readonly property bool hasInterDisplay: families.indexOf("Inter Display") >= 0
    readonly property string family: hasInter ? "Inter" : desktopFont.font.family
    readonly property string displayFamily: hasInterDisplay ? "Inter Display" : family

    readonly property font title: Qt.font({
        family: displayFamily, pixelSize: 24, hintingPreference: Font.PreferNoHinting, weight: Font.Bold, letterSpacing: hasInter ? -0.36 : 0
    })
    readonly property font title2: Qt.font({
        family: displayFamily, pixelSize: 18, hintingPreference: Font.PreferNoHinting, weight: Font.Bold, letterSpacing: hasInter ? -0.18 : 0
    })
    readonly property font body: Qt.font({ family: family, pixelSize: 13, hintingPreference: Font.PreferNoHinting })
    readonly property font bodyMedium: Qt.font({ family: family, pixelSize: 13, hintingPreference: Font.PreferNoHinting, weight: Font.Medium })
    readonly property font bodyStrong: Qt.font({ family: family, pixelSize: 13, hintingPreference: Font.PreferNoHinting, weight: Font.DemiBold })
    readonly property font foot: Qt.font({ family: family, pixelSize: 12, hintingPreference: Font.PreferNoHinting })
    readonly property font caption: Qt.font({ family: family, pixelSize: 11, hintingPreference: Font.PreferNoHinting })
    readonly property font captionStrong: Qt.font({ family: family, pixelSize: 11, hintingPreference: Font.PreferNoHinting, weight: Font.DemiBold })

    readonly property int gutter: 24
    readonly property int headHeight: 68
    readonly property int barHeight: 74

    // The longest that a change of opacity and a movement may take, in milliseconds.
    readonly property int quick: 90
    readonly property int tileScale: reducedMotion ? 0 : 140
    readonly property int popIn: reducedMotion ? 100 : 160
    readonly property int popOut: reducedMotion ? 100 : 110
}
