#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Two people at the real windows, with real keys and a real pointer, against a real room: what one does, the other sees on their screen."""
import argparse
import pathlib
import shutil
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Scripts"))
from screen import Failure, Person, Room, Screen, until  # noqa: E402


def check(what, is_true):
    if not is_true:
        raise Failure(what)


def color_at(person, x, y):
    """The colour on the screen at a point of the canvas, as red, green, blue."""
    left, top = person.place(x, y)
    text = person.screen.output(["import", "-window", "root", "-crop", f"1x1+{left}+{top}", "-depth", "8", "txt:-"])
    return [int(text.rsplit("#", 1)[1][i:i + 2], 16) for i in (0, 2, 4)]


def changed(before, after):
    return max(abs(a - b) for a, b in zip(before, after)) > 12


def pair(ana, bo):
    began = time.monotonic()
    ana.keys("Return")
    ana.type("ana")
    ana.keys("Return")
    code = until("six digits", lambda: ana.status().get("shareCode", {}).get("code"))
    bo.keys("Tab", "Return")
    time.sleep(0.5)
    bo.type(code)
    for person in (ana, bo):
        until("they see each other", lambda: person.status().get("presence", {}).get("partnerOnline"))
    time.sleep(1)
    ana.keys("Return")
    time.sleep(1)
    check("from the first window to one board took a minute", time.monotonic() - began < 60)


def a_new_note_comes_to_the_others_screen_when_it_is_let_go_of(ana, bo):
    # By the edge of where it comes to hang: paper of another colour than the glass.
    glass = color_at(bo, 900, 400)
    ana.keys("n")
    time.sleep(0.5)
    ana.screen.xdotool("type", "--delay", 25, "buy oranges")
    time.sleep(1.5)
    check("nothing of it is seen while it is written", not bo.item("buy"))
    ana.screen.xdotool("key", "Escape")
    note = until("the note over there", lambda: bo.item("buy oranges"))
    check("an unkept note has a day", note["payload"].get("expiresAt"))
    until("paper on their screen", lambda: changed(glass, color_at(bo, 900, 400)))


def it_is_dragged_and_undone_on_both_screens(ana, bo):
    glass = color_at(bo, 300, 700)
    ana.drag([(800, 500), (600, 600), (400, 690), (300, 700)])
    until("it hangs where it was let go", lambda: abs(bo.item("buy oranges")["center"]["x"] - 300) < 3)
    until("paper there", lambda: changed(glass, color_at(bo, 340, 760)))
    ana.keys("ctrl+z")
    until("it hangs back", lambda: abs(bo.item("buy oranges")["center"]["x"] - 800) < 3)
    ana.keys("ctrl+shift+z")
    until("and again", lambda: abs(bo.item("buy oranges")["center"]["x"] - 300) < 3)


def it_is_written_on(ana, bo):
    ana.click(300, 700)
    ana.keys("Return")
    ana.type(" and bread")
    ana.keys("ctrl+a", "ctrl+b", "Escape")
    until("the words", lambda: bo.item("buy oranges and bread"))
    check("bold", '"bold"' in str(bo.item("buy oranges and bread")).replace("'", '"'))


def keys_move_turn_and_keep_it(ana, bo):
    before = bo.item("buy oranges")
    ana.keys("Right", "shift+Down", "r", "plus", "k")
    after = until("it is kept", lambda: (lambda it: it if "expiresAt" not in it["payload"] else None)(bo.item("buy oranges")))
    check("right by one", abs(after["center"]["x"] - before["center"]["x"] - 1) < 0.01)
    check("down by ten", abs(after["center"]["y"] - before["center"]["y"] - 10) < 0.01)
    check("turned and larger", after["rotationDegrees"] != before["rotationDegrees"] and after["scale"] > 1)


def a_picture_is_pasted_and_a_doodle_drawn(ana, bo):
    path = ana.screen.folder / "red.png"
    subprocess.run(["convert", "-size", "900x1100", "xc:#a03020", str(path)], check=True)
    bo.paste_picture(path)
    photo = until("the photo over there", lambda: ana.item('"mediaId"'))
    where = photo["center"]
    until("its picture on their screen", lambda: color_at(ana, where["x"], where["y"] - 40)[0] > 2 * color_at(ana, where["x"], where["y"] - 40)[2])
    bo.keys("Escape", "d")
    bo.drag([(1200 + 4 * i, 200 + 3 * i) for i in range(40)])
    bo.keys("Return")
    until("the ink over there", lambda: ana.item('"strokes"'))


def taking_down_takes_down(ana, bo):
    ana.click(300, 720)
    ana.keys("Delete")
    until("it is gone over there", lambda: bo.item("buy oranges") is None)


def a_closed_board_has_what_was_typed_and_a_second_start_opens_it(ana, bo):
    glass = color_at(ana, 500, 850)
    ana.ask("put", "note", "tulips", "--keep", "--at", "460,790")
    until("its paper", lambda: changed(glass, color_at(ana, 500, 850)))
    ana.click(460, 790)
    ana.keys("Return", "ctrl+End")
    ana.type(" and lemons")
    ana.keys("alt+F4")
    until("what was typed, over there", lambda: bo.item("tulips and lemons"))
    until("no window", lambda: not ana.find_window())
    ana.open()
    until("its paper again", lambda: changed(glass, color_at(ana, 500, 850)))


def it_hangs_on_the_desktop(ana, _bo):
    found = ana.screen.xdotool("search", "--all", "--pid", ana.process.pid, "--name", "lumaro · desktop").split()
    check("one window on the one screen", len(found) == 1)
    kind = ana.screen.output(["xprop", "-id", found[0], "_NET_WM_WINDOW_TYPE"])
    check("behind the icons", "_NET_WM_WINDOW_TYPE_DESKTOP" in kind)


def it_opens_at_login(ana, _bo):
    program = shutil.which(ana.lumaro, path=ana.screen.env["PATH"])
    entry = ana.screen.folder / "home" / "config" / "autostart" / "lumaro-ana.desktop"
    check("the program where it lies, however it was called", f'Exec="{program}" ' in entry.read_text())


def main():
    parser = argparse.ArgumentParser()
    for program in ("lumaro", "lumaroctl", "room"):
        parser.add_argument(f"--{program}", required=True)
    programs = parser.parse_args()
    with Screen() as screen:
        room = Room(screen, programs.room)
        # By its name alone, as a shell finds it.
        program = pathlib.Path(programs.lumaro).resolve()
        screen.env["PATH"] = f"{program.parent}:{screen.env['PATH']}"
        ana, bo = (Person(screen, name, program.name, programs.lumaroctl, room, at) for name, at in (("ana", (0, 0)), ("bo", (1240, 0))))
        for deed in (pair, a_new_note_comes_to_the_others_screen_when_it_is_let_go_of, it_is_dragged_and_undone_on_both_screens, it_is_written_on,
                     keys_move_turn_and_keep_it, a_picture_is_pasted_and_a_doodle_drawn, taking_down_takes_down,
                     a_closed_board_has_what_was_typed_and_a_second_start_opens_it, it_hangs_on_the_desktop,
                     it_opens_at_login):
            deed(ana, bo)
            print("ok", deed.__name__, flush=True)


if __name__ == "__main__":
    main()
