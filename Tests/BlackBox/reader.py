# SPDX-License-Identifier: Apache-2.0
"""A screen reader at a screen: Orca, and beside it a listener to what programs tell of themselves."""
import re
import time

from screen import Failure, until

LISTENER = """
import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi

def tell(event):
    try:
        if event.detail1:
            print(event.type, "|", event.source.get_role_name(), "|", event.source.get_name(), flush=True)
    except gi.repository.GLib.GError:  # it is gone already
        pass

listener = Atspi.EventListener.new(tell)
for kind in ("focused", "showing", "selected"):
    listener.register("object:state-changed:" + kind)
print("listening", flush=True)
Atspi.event_main()
"""

# What Orca runs when it starts: each line is written at once, and keys are not named.
CUSTOMS = """
import orca.debug
import orca.settings
orca.debug.debugFile.reconfigure(line_buffering=True)
orca.settings.enableKeyEcho = False
"""


class Reader:
    """For a `Screen` on which no program has been started yet."""

    def __init__(self, screen):
        self.screen = screen
        del screen.env["QT_ACCESSIBILITY"]
        screen.env["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        screen.start(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"], "a11y-bus")
        owner = ["gdbus", "call", "--session", "-d", "org.a11y.Bus", "-o", "/org/a11y/bus", "-m", "org.a11y.Bus.GetAddress"]
        until("the bus of screen readers", lambda: "unix:" in screen.output(owner))
        self.events_path = screen.folder / "events"
        with open(self.events_path, "wb") as out:
            screen.start(["/usr/bin/python3", "-c", LISTENER], "listener", stdout=out)
        customs = screen.folder / "home" / "data" / "orca" / "orca-customizations.py"
        customs.parent.mkdir(parents=True)
        customs.write_text(CUSTOMS)
        self.debug = screen.folder / "orca.debug"
        screen.start(["orca", "--replace", "--debug-file", str(self.debug)], "orca")
        until("the reader", lambda: "Screen reader on." in self.speech())
        until("the listener", lambda: "listening" in self.events())

    def speech(self):
        """All that was said."""
        text = self.debug.read_text(errors="replace") if self.debug.exists() else ""
        return re.findall(r"SPEECH OUTPUT: '(.*?)'\s*\{", text)

    def events(self):
        """Lines of an event, the role and the name of where it was."""
        return self.events_path.read_text(errors="replace").splitlines()

    def hears(self, act, *parts, seconds=15):
        """What is said from this act on comes to have all the parts."""
        before = len(self.speech())
        act()
        try:
            return until(f"the reader to say {parts}", lambda: self.holding(self.speech()[before:], parts), seconds)
        except Failure as failure:
            raise Failure(f"{failure}; it said {self.speech()[before:]} after {self.events()[-6:]}") from None

    @staticmethod
    def holding(lines, parts):
        text = " ".join(lines)
        return text if all(part in text for part in parts) else None

    def rests(self):
        """Waits until nothing more is said."""
        count, since = -1, time.monotonic()
        while time.monotonic() - since < 1:
            if len(self.speech()) != count:
                count, since = len(self.speech()), time.monotonic()
            time.sleep(0.1)

    def focused(self):
        """The name of what the reader is at."""
        lines = [line for line in self.events() if ":focused" in line]
        return lines[-1].split("|", 2)[2].strip() if lines else ""

    def arrives(self, name, act):
        """The act brings the reader to something of that name."""
        before = len(self.events())
        act()
        until(f"the reader at '{name}'", lambda: any(":focused" in line and name in line for line in self.events()[before:]))

    def walk_to(self, person, name, key="Tab", most=80):
        """Presses the key until the reader is at something of that name."""
        for _ in range(most):
            if name in self.focused():
                return
            before = len(self.events())
            person.keys(key)
            until(f"focus to move on from '{self.focused()}' to '{name}'", lambda: len(self.events()) > before, 10)
            time.sleep(0.15)
        raise Failure(f"no way by {key} to '{name}', at '{self.focused()}'")
