#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Ann's computer keeps the board; Bea's finds it in their network by the code alone. Both go on when Ann's application ends and comes back."""
import os
import pathlib
import subprocess
import sys
import tempfile

from app import App, environment_of_nobody
from blackbox import PATIENCE, options
from two import BUS


class Home(App):
    """The application, told of no server."""

    def start(self):
        self.process = subprocess.Popen([self.binary, "--headless", "--profile", self.profile], stdout=self.log, stderr=self.log,
                                        env=self.environment)
        self.until(lambda: self.status() is not None)


def settle(app, verb, **fields):
    app.ask(verb, **fields)
    app.ask("secrets", inFile=True)
    app.until(lambda: app.status()["session"] == "onTheBoard")


def main():
    asked = options("room", "lumaro")
    with tempfile.TemporaryDirectory(prefix="lumaro-blackbox-") as folder:
        environment = environment_of_nobody(folder)
        # The room lies beside the application or on the path, as where they are installed.
        environment["PATH"] = os.path.dirname(asked.room) + ":" + environment["PATH"]
        conf = pathlib.Path(folder) / "bus.conf"
        conf.write_text(BUS)
        bus = subprocess.Popen(["dbus-daemon", f"--config-file={conf}", "--nofork", "--print-address"], stdout=subprocess.PIPE, env=environment)
        environment["DBUS_SYSTEM_BUS_ADDRESS"] = bus.stdout.readline().decode().strip()
        names = subprocess.Popen(["/usr/bin/python3", os.path.join(os.path.dirname(__file__), "network_names.py")], stdout=subprocess.PIPE,
                                 env=environment)
        assert names.stdout.readline() == b"ready\n"
        ann = Home(asked.lumaro, os.path.join(folder, "ann"), "", environment)
        bea = Home(asked.lumaro, os.path.join(folder, "bea"), "", environment)
        try:
            for app in (ann, bea):
                app.start()
                assert app.status()["server"] == "", app.status()
            refused = ann.ask("start", name="Ann")
            assert refused["status"] == 77 and "where our board is to live" in refused["err"], refused

            kept = ann.ask("server", here=True)
            assert kept["status"] == 0 and "kept here: http://" in kept["out"], (kept, ann.log_text())
            settle(ann, "start", name="Ann")
            bea.until(lambda: "Ann" in bea.status()["roomsNearby"])
            assert bea.status()["session"] == "neverPaired", "nobody joins a room because it is there"

            wrong = bea.ask("join", codeOrLink="000000", name="Bea")
            assert wrong["status"] == 64 and "no server" in wrong["err"], wrong
            settle(bea, "join", codeOrLink=ann.ask("code")["out"].strip(), name="Bea")
            note = ann.put_note("hello")
            bea.until(lambda: bea.items() == {note})

            ann.stop()
            bea.until(lambda: bea.status()["connection"] != "connected")
            late = bea.put_note("while you were away")
            assert late is not None
            ann.start()
            ann.until(lambda: ann.items() == {note, late})
            bea.until(lambda: bea.status()["pendingBatches"] == 0)

            ann.ask("server", here=False)
            ann.until(lambda: ann.status()["connection"] != "connected")
        finally:
            for app in (ann, bea):
                if app.process and app.process.poll() is None:
                    app.stop()
            for process in (names, bus):
                process.terminate()
                process.wait(PATIENCE)
                process.stdout.close()
    print("kept at home, found by its code, and back after a restart")


sys.exit(main())
