// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// One line of text. What comes from a station is never read as mark-up.
Text {
    color: Theme.text
    font: Theme.body
    elide: Text.ElideRight
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
