#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Kills the application in the middle of edits: what it had confirmed to the person reaches the room all the same."""
import os
import random
import threading
import time

from app import App, environment_of_nobody
from blackbox import Server, options


def pair(app):
    app.ask("start", name="Ann")
    app.ask("secrets", inFile=True)
    app.until(lambda: app.status()["session"] == "onTheBoard")


def put_until_killed(app, confirmed):
    for number in range(20):
        item = app.put_note(f"note {number}")
        if item is None:
            return
        confirmed.append(item)


def one_round(app, chance):
    """Edits, a kill in their midst, a new start; the ids that were confirmed before the kill."""
    confirmed = []
    hand = threading.Thread(target=put_until_killed, args=(app, confirmed))
    hand.start()
    time.sleep(chance.uniform(0, 0.05))
    app.kill()
    hand.join()
    app.start()
    return confirmed


def main():
    asked = options("room", "lumaro", kills=100)
    chance = random.Random(7)
    count = 0
    with Server(asked.room, "--messages-per-second", "100000", "--burst", "100000") as server:
        folder = server.folder.name
        app = App(asked.lumaro, os.path.join(folder, "ann"), server.url, environment_of_nobody(folder))
        app.start()
        pair(app)
        for _ in range(asked.kills):
            confirmed = one_round(app, chance)
            app.until(lambda: app.status()["connection"] == "connected" and app.status()["pendingBatches"] == 0)
            lost = set(confirmed) - app.items()
            assert not lost, f"confirmed and lost: {lost}"
            for item in app.items():
                assert app.ask("take-down", item=item)["status"] == 0
            count += len(confirmed)
        app.stop()
    assert count > asked.kills, "too few edits to have shown anything"
    print(f"kills {asked.kills}, confirmed {count}, lost 0")


main()
