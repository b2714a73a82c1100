# SPDX-License-Identifier: Apache-2.0
"""Two people's applications on one board, one of them with a desktop behind it; and a socket that reads along as the other."""
import os
import pathlib
import subprocess
import time
import uuid

from app import App, environment_of_nobody
from blackbox import PATIENCE, WebSocket

# Starts no service by itself: no keyring is to ask for a password.
BUS = """<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><policy context="default"><allow send_destination="*"/>
<allow receive_sender="*"/><allow own="*"/></policy></busconfig>"""


class Two:
    """Ann, who has a bus, that of her session and that of the system in one, and Bea, who has none."""

    def __init__(self, asked, server, *flags):
        folder = server.folder.name
        env = environment_of_nobody(folder)
        conf = pathlib.Path(folder) / "bus.conf"
        conf.write_text(BUS)
        self.bus = subprocess.Popen(["dbus-daemon", f"--config-file={conf}", "--nofork", "--print-address"], stdout=subprocess.PIPE, env=env)
        address = self.bus.stdout.readline().decode().strip()
        self.env = dict(env, DBUS_SESSION_BUS_ADDRESS=address, DBUS_SYSTEM_BUS_ADDRESS=address)
        self.ann = App(asked.lumaro, os.path.join(folder, "ann"), server.url, self.env, *flags)
        self.bea = App(asked.lumaro, os.path.join(folder, "bea"), server.url, env, *flags)
        self.server, self.wire, self.slowest = server, None, 0

    def meet(self):
        for app in (self.ann, self.bea):
            app.start()
        self.settle(self.ann, "start", name="Ann")
        self.settle(self.bea, "join", codeOrLink=self.ann.ask("code")["out"].strip(), name="Bea")
        status, _, joined = self.server.call("POST", "/joins/code", {"code": self.ann.ask("code")["out"].strip(), "name": "Bea",
                                                                "deviceId": str(uuid.uuid4()), "slot": "b"})
        assert status == 200, joined
        self.wire = WebSocket(self.server, joined["coupleId"], joined["token"])
        self.bea.until(lambda: self.bea.status()["presence"]["partnerOnline"])

    @staticmethod
    def settle(app, verb, **fields):
        app.ask(verb, **fields)
        app.ask("secrets", inFile=True)
        app.until(lambda: app.status()["session"] == "onTheBoard")

    def shown(self):
        """What Bea's application shows of Ann."""
        raise NotImplementedError

    def sees(self, act, holds, counts=True):
        """What Ann does comes to hold over there. What does not count is not among the slowest."""
        begin = time.monotonic()
        act()
        end = begin + PATIENCE
        while not holds(self.shown()):
            assert time.monotonic() < end, (self.shown(), self.ann.log_text()[-2000:])
            time.sleep(0.02)
        if counts:
            self.slowest = max(self.slowest, time.monotonic() - begin)

    def close(self):
        if self.wire:
            self.wire.close()
        for app in (self.ann, self.bea):
            if app.process:
                app.stop()
        self.bus.terminate()
        self.bus.wait(PATIENCE)
        self.bus.stdout.close()
