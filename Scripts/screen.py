# SPDX-License-Identifier: Apache-2.0
"""A screen without a display, and people at it: Xvfb with a window manager, real key presses and pointers, pictures."""
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import time


class Failure(Exception):
    """What was waited for did not come."""


def until(what, true, seconds=30):
    """Looks again and again until `true()` has an answer, and returns it."""
    end = time.monotonic() + seconds
    while True:
        answer = true()
        if answer:
            return answer
        if time.monotonic() > end:
            raise Failure(f"waited in vain: {what}")
        time.sleep(0.05)


def told(log):
    """What a log says that matters: a sanitizer's report from its beginning, else its end."""
    text = log.read_text(errors="replace")
    report = text.find("ERROR: AddressSanitizer")
    return text[report:report + 6000] if report >= 0 else text[-1500:]


class Surroundings:
    """A folder for all files that programs leave, a session bus and a keyring of its own: afterwards all of it is gone."""

    def __init__(self, env):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lumaro-screen-"))
        self.processes = []
        for name in ("home", "run"):
            (self.folder / name).mkdir(mode=0o700)
        self.env = dict(env, XDG_RUNTIME_DIR=str(self.folder / "run"), XDG_DATA_HOME=str(self.folder / "home/data"),
                        XDG_CONFIG_HOME=str(self.folder / "home/config"))
        if "WAYLAND_DISPLAY" in env:  # whose name is that of a socket in the folder that was
            self.env["WAYLAND_DISPLAY"] = os.path.join(env.get("XDG_RUNTIME_DIR", ""), env["WAYLAND_DISPLAY"])

    def start_bus(self):
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--print-address=1"], "bus", stdout=subprocess.PIPE, text=True)
        self.env["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        # No other daemon is started, and none covers the windows.
        self.start([pathlib.Path(__file__).parent / "notification-daemon"], "notifications")
        # A keyring that is open, as after a login.
        subprocess.run(["gnome-keyring-daemon", "--unlock", "--components=secrets", "--daemonize"], input=b"a password",
                       env=self.env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)

    def start(self, command, name, env=None, **options):
        log = open(self.folder / f"{name}.log", "ab")
        options.setdefault("stdout", log)
        process = subprocess.Popen(command, stderr=log, env=env or self.env, **options)
        self.processes.append(process)
        return process

    def output(self, command):
        return subprocess.run(command, env=self.env, capture_output=True, text=True, check=False).stdout

    def close(self):
        for process in reversed(self.processes):
            process.terminate()
        for process in reversed(self.processes):
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
        shutil.rmtree(self.folder, ignore_errors=True)

    def logs(self):
        return "\n".join(f"--- {path.name}\n{told(path)}" for path in sorted(self.folder.glob("*.log")))

    def __enter__(self):
        return self

    def __exit__(self, kind, error, _trace):
        if kind is not None and kind is not KeyboardInterrupt:
            print(self.logs())
        self.close()


class Screen(Surroundings):
    """A display of its own. Nothing of the real person's is seen."""

    def __init__(self, width=2560, height=900, scale=1):
        super().__init__({k: v for k, v in os.environ.items() if not k.startswith(("XDG_", "DBUS_", "WAYLAND_", "QT_"))})
        read, write = os.pipe()
        self.start(["Xvfb", "-displayfd", str(write), "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp", "-noreset"],
                   "xvfb", pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as number:
            display = number.readline().strip()
        if not display:
            raise Failure("there is no Xvfb")
        self.env.update(DISPLAY=f":{display}", HOME=str(self.folder / "home"), QT_QUICK_BACKEND="software",
                        QT_SCALE_FACTOR=str(scale), QT_ACCESSIBILITY="0")
        self.start_bus()
        self.start(["openbox", "--sm-disable"], "openbox")
        until("a window manager", lambda: "window id" in self.output(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"]))

    def xdotool(self, *arguments):
        return self.output(["xdotool", *map(str, arguments)]).strip()


class Room:
    """A room server of their own."""

    def __init__(self, screen, program, *flags):
        self.screen, self.program, self.flags, self.address = screen, program, flags, "127.0.0.1:0"
        self.database = screen.folder / "room.db"
        self.open()

    def open(self):
        out = self.screen.folder / "room.out"
        out.write_text("")
        with open(out, "wb") as written:
            self.process = self.screen.start([self.program, "--listen", self.address, "--database", self.database, *self.flags], "room", stdout=written)
        line = until("the room", lambda: next((l for l in out.read_text().splitlines() if l.startswith("listening on ")), None))
        self.url = line.removeprefix("listening on ")
        self.address = self.url.removeprefix("http://")

    def kill(self):
        self.process.kill()
        self.process.wait()


class Person:
    """One person's application, in a window at a place on the screen, and their hands."""

    WIDTH, HEIGHT = 1180, 780
    ABOVE, BELOW, BESIDE = 28, 100, 0.06  # what the editor keeps free of the canvas: points, and a part of the shorter side

    def __init__(self, screen, name, lumaro, lumaroctl, room, at=(0, 0), zone="UTC"):
        self.screen, self.name, self.at, self.zone = screen, name, at, zone
        self.lumaro, self.lumaroctl = lumaro, lumaroctl
        self.profile = screen.folder / name
        self.profile.mkdir(mode=0o700)
        # They know already where it hangs.
        (self.profile / "settings.ini").write_text("[General]\ntoldOfDesktop=true\n")
        self.start(room.url)

    def start(self, server):
        self.process = self.screen.start([self.lumaro, "--profile", self.profile, "--server", server], self.name,
                                         env=dict(self.screen.env, TZ=self.zone))
        self.take_window()

    def open(self):
        """Starts the program once more, which hands over to the one that runs."""
        subprocess.run([self.lumaro, "--profile", self.profile], env=self.screen.env, timeout=20, check=True)
        self.take_window()

    def take_window(self):
        self.window = until(f"the window of {self.name}", self.find_window)
        self.screen.xdotool("windowsize", "--sync", self.window, self.WIDTH, self.HEIGHT)
        self.screen.xdotool("windowmove", "--sync", self.window, *self.at)

    def find_window(self):
        found = self.screen.xdotool("search", "--all", "--onlyvisible", "--pid", self.process.pid, "--name", "^lumaro$|^lumaro · you")
        return found.splitlines()[0] if found else None

    def ask(self, *words):
        """What the application says of itself, through its own socket."""
        return subprocess.run([self.lumaroctl, "--app", "--profile", self.profile, *words], env=self.screen.env,
                              capture_output=True, text=True, check=False).stdout

    def status(self):
        text = self.ask("status")
        return json.loads(text) if text else {}

    def items(self):
        text = self.ask("show", "--json")
        return json.loads(text)["items"] if text else []

    def item(self, holds):
        """The first item whose JSON has that text."""
        return next((item for item in self.items() if holds in json.dumps(item, ensure_ascii=False)), None)

    def focus(self):
        self.screen.xdotool("windowactivate", "--sync", self.window)

    def keys(self, *keys):
        self.focus()
        self.screen.xdotool("key", "--delay", 40, *keys)

    def type(self, text):
        self.focus()
        self.screen.xdotool("type", "--delay", 25, text)

    def geometry(self):
        """Left, top, width and height of what is within the window's frame."""
        text = self.screen.output(["xwininfo", "-id", self.window])
        return [int(text.split(f"{what}:")[1].split()[0]) for what in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]

    def place(self, x, y):
        """Where a point of the canvas is on the screen."""
        left, top, width, height = self.geometry()
        inner = height - self.ABOVE - self.BELOW
        scale = min((width - 2 * round(self.BESIDE * min(width, height))) / 1600, inner / 1000)
        return (round(left + (width - 1600 * scale) / 2 + x * scale),
                round(top + self.ABOVE + (inner - 1000 * scale) / 2 + y * scale))

    def click(self, x, y, button=1):
        self.focus()
        self.screen.xdotool("mousemove", "--sync", *self.place(x, y), "click", button)

    def drag(self, points):
        self.focus()
        places = [self.place(*point) for point in points]
        self.screen.xdotool("mousemove", "--sync", *places[0], "mousedown", 1)
        for place in places[1:]:
            self.screen.xdotool("mousemove", "--sync", *place)
            time.sleep(0.012)
        self.screen.xdotool("mouseup", 1)

    def paste_picture(self, path):
        """Copies the PNG as another program would, and pastes it."""
        self.screen.start(["xclip", "-selection", "clipboard", "-t", "image/png", "-i", str(path)], "xclip")
        until("the clipboard", lambda: "image/png" in self.screen.output(["xclip", "-selection", "clipboard", "-t", "TARGETS", "-o"]))
        self.keys("ctrl+v")

    def picture(self, path):
        subprocess.run(["import", "-window", self.window, str(path)], env=self.screen.env, check=True)
