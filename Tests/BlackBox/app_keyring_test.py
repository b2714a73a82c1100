#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""A keyring that is locked when the application starts: the board is still theirs, and comes back when the person opens it."""
import os
import subprocess

from app import App, environment_of_nobody
from blackbox import PATIENCE, Server, options


class Keyring:
    """A bus of its own with a real gnome-keyring on it."""

    def __init__(self, environment):
        self.environment = environment
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE,
                                    stderr=subprocess.DEVNULL, env=environment)
        environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.stdout.readline().decode().strip()
        self.daemon = None

    def open(self):
        """Starts it with its collection open, as a login does."""
        self.daemon = subprocess.Popen(["gnome-keyring-daemon", "--foreground", "--unlock", "--components=secrets"],
                                       stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                       env=self.environment)
        self.daemon.stdin.write(b"the password")
        self.daemon.stdin.close()
        App.until(lambda: self._call("org.freedesktop.DBus", "/", "org.freedesktop.DBus.NameHasOwner",
                                     "org.freedesktop.secrets") == "(true,)")

    def lock(self):
        self._call("org.freedesktop.secrets", "/org/freedesktop/secrets", "org.freedesktop.Secret.Service.Lock",
                   "[objectpath '/org/freedesktop/secrets/collection/login']")

    def close(self):
        self.daemon.terminate()
        self.daemon.wait(PATIENCE)

    def end(self):
        self.close()
        self.bus.terminate()
        self.bus.wait(PATIENCE)
        self.bus.stdout.close()

    def _call(self, service, path, method, *arguments):
        done = subprocess.run(["gdbus", "call", "--session", "--dest", service, "--object-path", path, "--method", method,
                               *arguments], env=self.environment, capture_output=True, text=True, check=False)
        return done.stdout.strip()


def main():
    asked = options("room", "lumaro")
    with Server(asked.room) as server:
        environment = environment_of_nobody(server.folder.name)
        keyring = Keyring(environment)
        keyring.open()
        app = App(asked.lumaro, os.path.join(server.folder.name, "ann"), server.url, environment)
        app.start()
        assert app.ask("start", name="Ann")["status"] == 0
        assert app.status()["secretPlace"] == "keyring" and not os.path.exists(os.path.join(app.profile, "secrets"))
        assert not os.path.exists(os.path.join(environment["HOME"], ".config/autostart")), "nothing opens windows at login"
        note = app.put_note("still here")
        app.kill()

        keyring.lock()
        app.start()
        app.until(lambda: "waiting to be asked again" in app.log_text())
        assert app.log_text().count("keychain read failed") == 5, app.log_text()
        assert app.status()["session"] == "keychainLocked", app.status()
        assert "no invite" not in app.log_text().split("keychain read failed")[1], "a locked keyring is no first run"

        keyring.close()
        keyring.open()
        assert app.ask("unlock-keyring")["status"] == 0
        app.until(lambda: app.status()["connection"] == "connected" and app.items() == {note})
        app.stop()
        keyring.end()
    print("locked, asked five times, opened, and the board is back")


main()
