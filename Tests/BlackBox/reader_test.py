#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Two people by keys alone, with a screen reader: from the first page to a board with one of each on it."""
import argparse
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Scripts"))
from reader import Reader  # noqa: E402
from screen import Person, Room, Screen, until  # noqa: E402


class Hands:
    """Both people, and what the one with the reader hears."""

    def __init__(self, reader, ana, bo):
        self.reader, self.ana, self.bo = reader, ana, bo

    def press(self, person, name):
        self.reader.walk_to(person, name)
        person.keys("space")

    def they_meet(self):
        reader, ana, bo = self.reader, self.ana, self.bo
        reader.hears(ana.focus, "start our board")
        ana.keys("Return")
        ana.type("ana")
        ana.keys("Return")
        code = until("six digits", lambda: ana.status().get("shareCode", {}).get("code"))
        self.press(bo, "i have a code")
        bo.type(code)
        for person in (ana, bo):
            until("they see each other", lambda: person.status().get("presence", {}).get("partnerOnline"))

    def a_note_is_put_up_and_heard(self):
        self.bo.focus()
        self.reader.rests()
        self.ana.ask("put", "note", "buy oranges")
        self.reader.hears(lambda: None, "put up a note", "buy oranges")
