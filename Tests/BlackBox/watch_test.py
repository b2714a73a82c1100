#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""`lumaroctl watch` while the partner edits, and while the room goes and comes back."""
import json
import os
import queue
import subprocess
import threading
import uuid

from blackbox import PATIENCE, Server, WebSocket, batch, note, options, text_of


class Watch:
    """`lumaroctl watch --json` and its events."""

    def __init__(self, command):
        self.process = subprocess.Popen([*command, "watch", "--json"], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.events, self.passed = queue.Queue(), []
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        for line in self.process.stdout:
            self.events.put(json.loads(line))
        self.events.put(None)

    def until(self, wanted):
        """An event that is wanted; each is given once, and those passed over wait."""
        for event in self.passed:
            if wanted(event):
                self.passed.remove(event)
                return event
        while True:
            event = self.events.get(timeout=PATIENCE)
            assert event is not None, self.process.stderr.read()
            if wanted(event):
                return event
            self.passed.append(event)

    def message(self, kind):
        return self.until(lambda event: event["event"] == "message" and event["message"]["type"] == kind)["message"]

    def board(self, texts):
        return self.until(lambda event: event["event"] == "board" and
                          [text_of(item) for item in event["board"]["items"]] == texts)

    def stop(self):
        self.process.terminate()
        assert self.process.wait(PATIENCE) == 0
        self.process.stdout.close()
        self.process.stderr.close()


def share_a_board(lumaroctl, profile, server):
    """One person with lumaroctl, the other with a socket of the test's own."""
    couple, token = server.new_couple()
    command = [lumaroctl, "--profile", profile, "--server", server.url]

    def run(*verb):
        done = subprocess.run([*command, *verb], capture_output=True, text=True, timeout=PATIENCE, check=False)
        assert done.returncode == 0, (verb, done.stdout, done.stderr)
        return done.stdout

    run("join", server.new_code(couple, token), "--name", "Bea")
    ada = WebSocket(server, couple, token)
    assert ada.receive("welcome")["names"] == {"a": "Ada", "b": "Bea"}
    watch = Watch(command)
    assert watch.message("welcome")["partner"] == "b"
    first, later = str(uuid.uuid4()), 1_800_000_000_000
    ada.send(batch([note(first, "from the socket", later, "a")]))
    assert watch.message("ops")["author"] == "a"
    watch.board(["from the socket"])
    run("put", "note", "from lumaroctl", "--keep")
    relayed = ada.receive("ops")
    assert relayed["author"] == "b" and text_of(relayed["ops"][0]["item"]) == "from lumaroctl", relayed
    watch.board(["from the socket", "from lumaroctl"])

    server.kill()
    server.start()
    watch.until(lambda event: event["event"] == "state" and event["state"] == "waiting")
    ada.close()
    ada = WebSocket(server, couple, token)
    assert watch.message("welcome")["board"] == server.snapshot(couple, token)
    ada.send(batch([{"op": "delete", "itemId": first, "deletedAt": later + 1}]))
    watch.board(["from lumaroctl"])
    watch.stop()
    ada.close()
    shown = json.loads(run("show", "--json"))
    assert [text_of(item) for item in shown["items"]] == ["from lumaroctl"], shown


def main():
    asked = options("room", "lumaroctl")
    with Server(asked.room) as server:
        share_a_board(asked.lumaroctl, os.path.join(server.folder.name, "bea"), server)
        assert server.stop() == 0


if __name__ == "__main__":
    main()
