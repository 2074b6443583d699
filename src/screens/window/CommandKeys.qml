// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Velarin.Models

// The keys that work in the whole window.
Item {
    id: root

    required property PlaybackCommands commands

    signal quitRequested()
    signal menuRequested()
    signal nextAreaRequested()
    signal previousAreaRequested()

    Accessible.ignored: true

    Shortcut {
        sequence: "Ctrl+P"
        onActivated: root.commands.toggle()
    }
    Shortcut {
        sequence: "Ctrl+Right"
        onActivated: root.commands.next()
    }
    Shortcut {
        sequence: "Ctrl+Left"
        onActivated: root.commands.previous()
    }
    Shortcut {
        sequence: "Ctrl+D"
        onActivated: root.commands.toggleFavorite()
    }
    Shortcut {
        sequence: "Ctrl+Up"
        onActivated: root.commands.louder()
    }
    Shortcut {
        sequence: "Ctrl+Down"
        onActivated: root.commands.quieter()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: root.quitRequested()
    }
    Shortcut {
        sequence: "F10"
        onActivated: root.menuRequested()
    }
    Shortcut {
        sequence: "F6"
        onActivated: root.nextAreaRequested()
    }
    Shortcut {
        sequence: "Shift+F6"
        onActivated: root.previousAreaRequested()
    }
}
