# SPDX-License-Identifier: GPL-3.0-or-later
"""The players, as commands in which @ADDRESS@ stands for what they play."""

import os
import subprocess

NOBODY = 65534
OURS = "Velarin"


def _unprivileged(world, name, command):
    """With clean settings, and as a user of its own where we are root: VLC refuses root."""
    home = world.folder / f"home-{name}"
    home.mkdir(exist_ok=True)
    prefix = ["env", "-u", "DISPLAY", f"HOME={home}", f"XDG_CONFIG_HOME={home}", f"XDG_CACHE_HOME={home}",
              f"XDG_DATA_HOME={home}", f"XDG_RUNTIME_DIR={home}"]
    if os.geteuid() == 0:
        os.chown(home, NOBODY, NOBODY)
        prefix = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"] + prefix
    return prefix + command


def players(world):
    return {
        OURS: [str(world.bin / "velarin-play-station"), "@ADDRESS@"],
        "mpv": _unprivileged(world, "mpv", ["mpv", "--no-config", "--no-video", "--really-quiet", "@ADDRESS@"]),
        "VLC": _unprivileged(world, "vlc", ["cvlc", "--quiet", "--aout=pulse", "@ADDRESS@"]),
        "gst-play": _unprivileged(world, "gst", ["gst-play-1.0", "--quiet", "--no-interactive", "@ADDRESS@"]),
    }


def idle_players(world):
    return {
        "mpv": _unprivileged(world, "mpv", ["mpv", "--no-config", "--no-video", "--really-quiet", "--idle"]),
        "VLC": _unprivileged(world, "vlc", ["cvlc", "--quiet", "--aout=pulse"]),
    }


def versions():
    """As the distribution numbers them."""
    names = ["mpv", "vlc-bin", "gstreamer1.0-plugins-base-apps", "pulseaudio"]
    answer = subprocess.run(["dpkg-query", "-W", "-f", "${Package} ${Version}, ", *names],
                            capture_output=True, check=False, text=True)
    return answer.stdout.rstrip(", ")
