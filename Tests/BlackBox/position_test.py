#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Where the computer is, asked by the real class in a sandbox through the real portal, and by the same program outside it."""
import os
import subprocess
import tempfile
import time

from blackbox import PATIENCE, options

HERE = os.path.dirname(os.path.abspath(__file__))
SKIPPED = 77
APP = "app.lumaro.Lumaro"
FOUND = "authorized -17.2500 -179.9999"
BUS = """<busconfig><type>session</type><listen>unix:path={}/bus</listen><auth>EXTERNAL</auth><policy context="default">
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy></busconfig>"""
PORTAL = """[portal]
DBusName=org.freedesktop.impl.portal.desktop.lumarotest
Interfaces=org.freedesktop.impl.portal.Access;org.freedesktop.impl.portal.Lockdown;
UseIn=lumarotest
"""
INFO = f"""[Application]
name={APP}
runtime=runtime/app.lumaro.Platform/x86_64/1
[Instance]
instance-id=1
app-path=/
runtime-path=/
flatpak-version=1.14.0
"""
# A root of its own, for the file that makes a sandbox of it must lie there.
SANDBOX = ["bwrap", "--ro-bind", "/usr", "/usr", "--symlink", "usr/bin", "/bin", "--symlink", "usr/lib", "/lib", "--symlink", "usr/lib64",
           "/lib64", "--ro-bind", "/etc", "/etc", "--proc", "/proc", "--dev", "/dev"]


class Desktop:
    """A bus of its own, session bus and system bus in one, with GeoClue, a permission store, and the portal over a person who
    answers as `how` says."""

    def __init__(self, program, how):
        self.program, self.processes = program, []
        self.folder = tempfile.TemporaryDirectory(prefix="lumaro-blackbox-")
        self.read = 0  # lines of what stands behind the portal
        try:
            self._start(how)
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        for process in reversed(self.processes):
            process.kill()
            process.wait(PATIENCE)
            process.stdout.close()
        self.processes.clear()
        self.folder.cleanup()

    def _path(self, name, text=None):
        path = os.path.join(self.folder.name, name)
        if text is not None:
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
        return path

    def _start(self, how):
        home = self.folder.name
        address = "unix:path=" + self._path("bus")
        self.environment = {
            "PATH": os.environ["PATH"], "HOME": home, "XDG_RUNTIME_DIR": home, "XDG_DATA_HOME": self._path("data"),
            "XDG_DESKTOP_PORTAL_DIR": os.path.dirname(self._path("portals/lumarotest.portal", PORTAL)),
            "XDG_CURRENT_DESKTOP": "lumarotest",
            "DBUS_SESSION_BUS_ADDRESS": address, "DBUS_SYSTEM_BUS_ADDRESS": address,
            **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}}
        config = self._path("bus.conf", BUS.format(home))
        self._run("dbus-daemon", "--nofork", "--print-address", f"--config-file={config}").stdout.readline()
        # The system's own Python, which has the package.
        self._path("behind.log", "")
        self._run("/bin/sh", "-c", 'exec "$@" >"$0"', self._path("behind.log"), "/usr/bin/python3", "-B",
                  os.path.join(HERE, "location_desktop.py"), how)
        self.said(1)
        self._run_service("/usr/libexec/xdg-permission-store", "org.freedesktop.impl.portal.PermissionStore")
        self._run_service("/usr/libexec/xdg-desktop-portal", "org.freedesktop.portal.Desktop")

    def _run(self, *command):
        process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, env=self.environment)
        self.processes.append(process)
        return process

    def _run_service(self, program, name):
        self._run(program)
        until = time.monotonic() + PATIENCE
        asked = ["gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/", "--method",
                 "org.freedesktop.DBus.NameHasOwner", name]
        while subprocess.run(asked, env=self.environment, capture_output=True, text=True, check=False).stdout.strip() != "(true,)":
            assert time.monotonic() < until, f"{program} did not start"
            time.sleep(0.02)

    def ask(self, *arguments, boxed=True, seconds=PATIENCE):
        """What the program prints: the answer, or "nothing" after so many seconds."""
        command = [self.program, str(seconds), *arguments]
        if boxed:
            command = [*SANDBOX, "--bind", self.folder.name, self.folder.name,
                       "--ro-bind", os.path.dirname(self.program), os.path.dirname(self.program),
                       "--ro-bind", self._path("info.ini", INFO), "/.flatpak-info", *command]
        done = subprocess.run(command, env=self.environment, capture_output=True, text=True, timeout=2 * PATIENCE, check=False)
        assert done.returncode == 0, done
        return done.stdout.strip()

    def said(self, count):
        """The next lines of what stands behind the portal; there must be so many, and no more."""
        until = time.monotonic() + PATIENCE
        while len(self._lines()) < self.read + count and time.monotonic() < until:
            time.sleep(0.02)
        time.sleep(0.2)
        lines = self._lines()[self.read:]
        assert len(lines) == count, lines
        self.read += count
        return lines

    def _lines(self):
        with open(self._path("behind.log"), encoding="utf-8") as log:
            return log.read().splitlines()


def the_person_says_yes(program):
    with Desktop(program, "grant") as desktop:
        assert desktop.ask() == FOUND
        # Asked once, as the program that it is; for a neighbourhood, by the portal's own name; and nothing goes on.
        assert desktop.said(3) == [f"dialog {APP}", "start xdg-desktop-portal 5", "stop"]
        assert desktop.ask("block") == FOUND
        assert desktop.said(2) == ["start xdg-desktop-portal 6", "stop"], "the answer is remembered"
        assert desktop.ask(boxed=False) == FOUND
        assert desktop.said(3) == ["start lumaro 5", "stop", "delete"], "no portal outside a sandbox"


def the_person_says_no(program):
    with Desktop(program, "deny") as desktop:
        for questions in (1, 0):
            assert desktop.ask() == "denied"
            desktop.said(questions)


def nobody_answers(program):
    with Desktop(program, "silent") as desktop:
        assert desktop.ask(seconds=1) == "nothing"
        desktop.said(1)


def it_is_locked_down(program):
    with Desktop(program, "locked") as desktop:
        assert desktop.ask() == "restricted"
        desktop.said(0)


def main():
    program = options("program").program
    if subprocess.run([*SANDBOX, "true"], check=False).returncode != 0:
        print("no sandbox can be made here")
        raise SystemExit(SKIPPED)
    for play in (the_person_says_yes, the_person_says_no, nobody_answers, it_is_locked_down):
        play(program)
    print("yes, no, silence and a lockdown, through the portal")


main()
