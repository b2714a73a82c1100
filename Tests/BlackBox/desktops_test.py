#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""The board on real desktops: behind the windows of sway, and never over the icons of a file manager that draws the desktop."""
import argparse
import json
import os
import pathlib
import pwd
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Scripts"))
from screen import Failure, Screen, Surroundings, until  # noqa: E402

NOBODY_THERE = "http://127.0.0.1:9"  # no room: an empty board hangs all the same


def check(what, is_true):
    if not is_true:
        raise Failure(what)


def color(picture, x, y):
    """The colour of a pixel of a picture in a file, as red, green, blue."""
    text = subprocess.run(["convert", picture, "-crop", f"1x1+{x}+{y}", "-depth", "8", "txt:-"], capture_output=True, text=True, check=True).stdout
    return [int(text.rsplit("#", 1)[1][i:i + 2], 16) for i in (0, 2, 4)]


class Board:
    """The program, which hangs on the desktop and opens no window."""

    def __init__(self, surroundings, lumaro, env=None):
        self.surroundings = surroundings
        self.process = surroundings.start([lumaro, "--hidden", "--profile", surroundings.folder / "board", "--server", NOBODY_THERE],
                                          "board", env=env)

    def windows(self):
        return self.surroundings.xdotool("search", "--all", "--onlyvisible", "--pid", self.process.pid, "--name", "lumaro · desktop").split()

    def end(self):
        self.process.terminate()
        self.process.wait(20)


def icons_are_never_covered(lumaro):
    with Screen(1280, 800) as screen:
        folder = screen.folder / "home/Desktop"
        folder.mkdir()
        (folder / "a letter.txt").write_text("dear bo")
        board = Board(screen, lumaro)
        until("the board behind everything", board.windows)

        def start_icons():
            return screen.start(["pcmanfm", "--desktop"], "pcmanfm")

        def has_icons():
            return screen.xdotool("search", "--all", "--onlyvisible", "--class", "pcmanfm").split()

        icons = start_icons()
        until("its icons", has_icons)
        until("no board over them", lambda: not board.windows())
        icons.terminate()
        until("a board again, when they are gone", board.windows)
        board.end()
        # The other way round.
        icons = start_icons()
        until("its icons first", has_icons)
        board = Board(screen, lumaro)
        until("the program", (screen.folder / "board/app.socket").exists)
        subprocess.run(["sleep", "1"], check=True)
        check("no board over icons that were first", not board.windows())
        icons.terminate()
        until("a board, when they are gone", board.windows)


class Sway(Surroundings):
    """A compositor without a screen; it does not run as root."""

    def __init__(self):
        super().__init__({k: v for k, v in os.environ.items() if not k.startswith(("XDG_", "DBUS_", "WAYLAND_", "QT_", "DISPLAY"))})
        self.place = pathlib.Path(tempfile.mkdtemp(prefix="lumaro-sway-"))
        (self.place / "config").write_text("xwayland disable\noutput HEADLESS-1 resolution 1280x800\noutput HEADLESS-2 resolution 800x600 scale 2\n"
                                           "default_border normal\n")
        who = {}
        if os.geteuid() == 0:
            nobody = pwd.getpwnam("nobody")
            shutil.chown(self.place, nobody.pw_uid)
            who = {"user": nobody.pw_uid, "group": nobody.pw_gid, "extra_groups": []}
        self.place.chmod(0o700)
        self.env.update(HOME=str(self.folder / "home"), XDG_RUNTIME_DIR=str(self.place), SWAYSOCK=str(self.place / "sway.sock"),
                        QT_QUICK_BACKEND="software", QT_ACCESSIBILITY="0")
        self.start_bus()
        env = dict(self.env, HOME=str(self.place), WLR_BACKENDS="headless", WLR_HEADLESS_OUTPUTS="2", WLR_RENDERER="pixman", WLR_LIBINPUT_NO_DEVICES="1")
        self.start(["sway", "-c", self.place / "config"], "sway", env=env, cwd="/", **who)
        socket = until("sway", lambda: next((p for p in self.place.glob("wayland-*") if not p.name.endswith(".lock")), None))
        self.env["WAYLAND_DISPLAY"] = socket.name
        until("its screens", lambda: len(self.ask("get_outputs")) == 2)

    def ask(self, what):
        text = self.output(["swaymsg", "-r", "-t", what])
        return json.loads(text) if text else []

    def views(self):
        """The ordinary windows."""
        found, waiting = [], [self.ask("get_tree")]
        while waiting:
            node = waiting.pop()
            waiting += node.get("nodes", []) + node.get("floating_nodes", [])
            if node.get("pid"):
                found.append(node["name"])
        return found

    def picture(self, output):
        path = self.folder / f"{output}.png"
        subprocess.run(["grim", "-o", output, str(path)], env=self.env, check=True)
        return str(path)

    def close(self):
        super().close()
        shutil.rmtree(self.place, ignore_errors=True)


def is_paper(rgb):
    return min(rgb) > 90 and max(rgb) - min(rgb) < 120


def behind_the_windows_of_sway(lumaro, keep):
    with Sway() as sway:
        check("nothing hangs there yet", not is_paper(color(sway.picture("HEADLESS-1"), 640, 300)))
        board = Board(sway, lumaro)
        for output in ("HEADLESS-1", "HEADLESS-2"):
            until(f"paper on {output}", lambda: is_paper(color(sway.picture(output), 300, 250)))
            if keep:
                shutil.copy(sway.picture(output), keep)
        check("it is no window among the others", not sway.views())
        # The board under one's hands is one, over the paper.
        subprocess.run([lumaro, "--profile", sway.folder / "board"], env=sway.env, timeout=20, check=True)
        until("a window", lambda: sway.views() == ["lumaro"])
        if keep:
            subprocess.run(["sleep", "2"], check=True)
            shutil.copy(sway.picture("HEADLESS-1"), pathlib.Path(keep) / "with-window.png")
        # A screen that is plugged in has its board, too.
        sway.output(["swaymsg", "create_output"])
        until("another screen", lambda: len(sway.ask("get_outputs")) == 3)
        until("paper on it", lambda: is_paper(color(sway.picture("HEADLESS-3"), 300, 250)))
        board.end()
        until("it takes its paper with it", lambda: not is_paper(color(sway.picture("HEADLESS-3"), 300, 250)))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--lumaro", required=True)
    parser.add_argument("--keep", help="a folder for the pictures of the screens")
    arguments = parser.parse_args()
    lumaro = str(pathlib.Path(arguments.lumaro).resolve())
    icons_are_never_covered(lumaro)
    behind_the_windows_of_sway(lumaro, arguments.keep)
    print("behind windows and icons, everywhere")


if __name__ == "__main__":
    main()
