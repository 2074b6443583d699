// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// An arc that turns once in 900 ms while somebody can see it; still where the desktop wishes no movement.
Icon {
    id: root

    symbol: "arc"
    ink: Theme.accent
    side: 24
    smooth: true

    RotationAnimation on rotation {
        running: root.visible && !Theme.reducedMotion && root.Window.visibility !== Window.Hidden
            && root.Window.visibility !== Window.Minimized
        from: 0
        to: 360
        duration: 900
        loops: Animation.Infinite
    }
}
