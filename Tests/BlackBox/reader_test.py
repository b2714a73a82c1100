#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Two people by keys alone, with a screen reader: from the first page to a board with one of each on it."""
import argparse
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Scripts"))
from reader import Reader  # noqa: E402
from screen import Failure, Person, Room, Screen, until  # noqa: E402


class Evening:
    """Both people, and the reader that reads whichever window is in front."""

    def __init__(self, reader, ana, bo):
        self.reader, self.ana, self.bo = reader, ana, bo

    def press(self, person, name):
        self.reader.walk_to(person, name)
        person.keys("space")

    def up(self, kind):
        """The items of that kind, as bo's board has them."""
        return [item for item in self.bo.items() if item["kind"] == kind]

    def they_meet(self):
        ana, bo = self.ana, self.bo
        self.reader.hears(ana.focus, "start our board")
        ana.keys("Return")
        ana.type("ana")
        ana.keys("Return")
        code = until("six digits", lambda: ana.status().get("shareCode", {}).get("code"))
        bo.focus()
        self.press(bo, "i have a code")
        self.reader.arrives("the board", lambda: bo.type(code))
        for person in (ana, bo):
            until("they see each other", lambda: person.status().get("presence", {}).get("partnerOnline"))
        self.reader.arrives("the board", lambda: ana.keys("Return"))

    def a_note_is_written_and_heard(self):
        self.ana.keys("n")
        self.ana.type("buy oranges")
        if self.up("note"):
            raise Failure("a note that is being written is nobody else's")
        self.ana.keys("Escape")
        until("the note over there", lambda: self.bo.item("buy oranges"))
        self.ana.keys("Escape")
        self.reader.hears(lambda: self.ana.keys("Tab"), "note from you, pinned today", "buy oranges")
        self.reader.hears(lambda: self.ana.keys("k"), "kept up")
        until("it is kept", lambda: "expiresAt" not in self.bo.item("buy oranges")["payload"])

    def the_partners_deeds_are_told(self):
        self.reader.rests()
        self.reader.hears(lambda: self.bo.ask("put", "note", "and bread", "--keep"), "put up a note, 'and bread'")
        note = self.bo.item("and bread")
        self.reader.hears(lambda: self.bo.ask("take-down", note["id"]), "took down a note, 'and bread'")

    def each_card_goes_up_from_the_dock(self):
        for name, kind in (("a block together", "pomodoro"), ("their window", "location"), ("their music", "nowPlayingSlot"),
                           ("both clocks", "timezones"), ("their day", "calendar")):
            self.press(self.ana, name)
            until(name, lambda: self.up(kind))
            self.ana.keys("Escape")

    def a_countdown(self):
        self.press(self.ana, "a countdown")
        self.reader.hears(lambda: None, "until")
        self.ana.type("the train to you")
        self.ana.keys("Return")
        until("the countdown over there", lambda: self.bo.item("the train to you"))

    def a_photo_and_a_sticker(self):
        path = self.ana.screen.folder / "cup.png"
        subprocess.run(["convert", "-size", "600x600", "xc:#e8ddc8", "-fill", "#2b5d8a", "-draw", "circle 300,300 300,140", str(path)],
                       check=True)
        for name, kind in (("a photo", "photo"), ("a sticker", "sticker")):
            self.press(self.ana, name)
            until("the file dialog", lambda: "lumaro" not in self.ana.screen.xdotool("getactivewindow", "getwindowname"))
            self.ana.screen.xdotool("type", "--delay", 25, str(path))
            self.ana.screen.xdotool("key", "Return")
            if kind == "sticker":
                self.reader.walk_to(self.ana, "stick it up")
                self.ana.keys("space")
            until(f"{name} over there", lambda: self.up(kind))

    def a_heart(self):
        self.ana.focus()
        self.ana.keys("Escape", "Escape")
        self.reader.walk_to(self.ana, "buy oranges")
        self.ana.keys("h")
        until("the heart over there", lambda: self.up("doodle"))

    def nothing_is_there_twice(self):
        names = [line for line in self.reader.events() if "note from you" in line and ":showing" in line]
        if len(names) > len(set(names)):
            raise Failure(f"read twice: {names}")


def main():
    parser = argparse.ArgumentParser()
    for program in ("lumaro", "lumaroctl", "room"):
        parser.add_argument(f"--{program}", required=True)
    programs = parser.parse_args()
    with Screen() as screen:
        reader = Reader(screen)
        room = Room(screen, programs.room)
        ana, bo = (Person(screen, name, programs.lumaro, programs.lumaroctl, room, at) for name, at in (("ana", (0, 0)), ("bo", (1240, 0))))
        evening = Evening(reader, ana, bo)
        for deed in (evening.they_meet, evening.a_note_is_written_and_heard, evening.the_partners_deeds_are_told,
                     evening.each_card_goes_up_from_the_dock, evening.a_countdown, evening.a_photo_and_a_sticker, evening.a_heart,
                     evening.nothing_is_there_twice):
            deed()
            print(deed.__name__.replace("_", " "), flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
