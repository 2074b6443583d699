// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Velarin.Parts

// The heading of a group of places.
AppText {
    required property string section

    leftPadding: 10
    bottomPadding: 7
    height: 30
    text: section
    font: Theme.captionStrong
    color: Theme.text2
    verticalAlignment: Text.AlignBottom
    Accessible.role: Accessible.Heading
}
