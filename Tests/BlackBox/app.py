# SPDX-License-Identifier: Apache-2.0
"""The application without a window as a process, and its socket for commands."""
import json
import os
import signal
import socket
import subprocess
import time
import uuid

from blackbox import PATIENCE


def environment_of_nobody(folder):
    """No session, no keyring: the person lets a file keep the token."""
    home = os.path.join(folder, "home")
    os.makedirs(home, mode=0o700)
    return {"PATH": os.environ["PATH"], "HOME": home, "XDG_RUNTIME_DIR": home,
            "DBUS_SESSION_BUS_ADDRESS": "unix:path=" + os.path.join(home, "no-bus"),
            "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=" + os.path.join(home, "no-bus"),
            **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}}


class App:
    """`lumaro --headless` on a profile that outlives its processes."""

    def __init__(self, binary, profile, server, environment, *flags):
        self.binary, self.profile, self.server, self.flags, self.process = binary, profile, server, flags, None
        self.environment = environment
        self.log = open(profile + ".log", "ab")

    def start(self):
        self.process = subprocess.Popen([self.binary, "--headless", "--profile", self.profile, "--server", self.server, *self.flags],
                                        stdout=self.log, stderr=self.log, env=self.environment)
        self.until(lambda: self.status() is not None)

    def kill(self):
        self.process.send_signal(signal.SIGKILL)
        self.process.wait(PATIENCE)

    def stop(self):
        self.process.terminate()
        status = self.process.wait(PATIENCE)
        assert status == 0, status

    def log_text(self):
        with open(self.profile + ".log", encoding="utf-8", errors="replace") as log:
            return log.read()

    def ask(self, verb, **fields):
        """The answer; none when the application ended first."""
        line = json.dumps({"wait": 5, "verb": {"verb": verb, **fields}})
        try:
            with socket.socket(socket.AF_UNIX) as near:
                near.settimeout(PATIENCE)
                near.connect(os.path.join(self.profile, "app.socket"))
                near.sendall(line.encode() + b"\n")
                answer = near.makefile().readline()
            return json.loads(answer) if answer else None
        except (FileNotFoundError, ConnectionError):
            return None

    def status(self):
        answer = self.ask("status")
        return json.loads(answer["out"]) if answer else None

    def put_note(self, text):
        """The id of a note that is confirmed; none when there was no answer."""
        item = {"kind": "note", "payload": {
            "pm": {"type": "doc", "content": [{"type": "paragraph", "content": [{"type": "text", "text": text}]}]},
            "paper": "butter", "pin": "brass"}}
        answer = self.ask("put", id=str(uuid.uuid4()), item=item)
        if answer is None:
            return None
        assert answer["status"] == 0, answer
        return answer["out"].strip()

    def items(self):
        return {item["id"] for item in json.loads(self.ask("show", json=True)["out"])["items"]}

    @staticmethod
    def until(holds):
        end = time.monotonic() + PATIENCE
        while not holds():
            assert time.monotonic() < end, "waited in vain"
            time.sleep(0.01)
