#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""What stands behind the real portal in a test: GeoClue, and the desktop's part that asks the person. One process on the bus that the
environment names; it prints a line for everything that is asked of it. Usage: location_desktop.py grant|deny|silent|locked [LAT LON]"""
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

HOW = sys.argv[1]
PROPERTIES = "org.freedesktop.DBus.Properties"
CLUE = "org.freedesktop.GeoClue2"
ROOT = "/org/freedesktop/GeoClue2"
IMPL = "org.freedesktop.impl.portal"
DESKTOP = "/org/freedesktop/portal/desktop"
# A hand's breadth from the date line, where nothing else is said.
LATITUDE, LONGITUDE = map(float, sys.argv[2:4] or (-17.25, -179.9999))
PLACE = {"Latitude": dbus.Double(LATITUDE), "Longitude": dbus.Double(LONGITUDE), "Accuracy": dbus.Double(25)}


def say(*words):
    print(*words, flush=True)


class Located(dbus.service.Object):
    """A location that a client was told of."""

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, _interface):
        return PLACE


class Client(dbus.service.Object):
    """One program's, which hears of the place once it has started."""

    def __init__(self, bus, path):
        super().__init__(bus, path)
        self.bus, self.path = bus, path
        self.properties = {"DesktopId": "", "RequestedAccuracyLevel": dbus.UInt32(0), "Active": False}
        self.located = Located(bus, path + "/Location/1")

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, _interface):
        return self.properties

    @dbus.service.method(PROPERTIES, in_signature="ssv")
    def Set(self, _interface, name, value):
        self.properties[name] = value

    @dbus.service.method(CLUE + ".Client")
    def Start(self):
        say("start", self.properties["DesktopId"], self.properties["RequestedAccuracyLevel"])
        GLib.timeout_add(50, lambda: self.LocationUpdated("/", self.path + "/Location/1"))

    @dbus.service.method(CLUE + ".Client")
    def Stop(self):
        say("stop")

    @dbus.service.signal(CLUE + ".Client", signature="oo")
    def LocationUpdated(self, before, now):
        pass


class Manager(dbus.service.Object):
    """GeoClue's first object."""

    clients = {}

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, _interface, _name):
        return dbus.UInt32(8)

    @dbus.service.method(CLUE + ".Manager", out_signature="o", sender_keyword="sender")
    def GetClient(self, sender=None):
        if sender not in self.clients:
            self.clients[sender] = Client(self.connection, f"{ROOT}/Client/{len(self.clients) + 1}")
        return self.clients[sender].path

    @dbus.service.method(CLUE + ".Manager", out_signature="o", sender_keyword="sender")
    def CreateClient(self, sender=None):
        return self.GetClient(sender)

    @dbus.service.method(CLUE + ".Manager", in_signature="o")
    def DeleteClient(self, _path):
        say("delete")


class Backend(dbus.service.Object):
    """What the portal asks of a desktop."""

    @dbus.service.method(IMPL + ".Access", in_signature="osssssa{sv}", out_signature="ua{sv}", async_callbacks=("then", "_error"))
    def AccessDialog(self, _handle, app, _parent, _title, _subtitle, _body, _options, then, _error):
        say("dialog", app)
        if HOW != "silent":
            then(dbus.UInt32(1 if HOW == "deny" else 0), {})

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return self.GetAll(interface)[name]

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        if not interface.endswith(".Lockdown"):
            return {"version": dbus.UInt32(1)}
        return {"disable-" + what: dbus.Boolean(HOW == "locked" and what == "location")
                for what in ("printing", "save-to-disk", "application-handlers", "location", "camera", "microphone", "sound-output")}


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    names = [dbus.service.BusName(name, bus) for name in (CLUE, IMPL + ".desktop.lumarotest")]
    objects = [Manager(bus, ROOT + "/Manager"), Backend(bus, DESKTOP)]
    say("ready", len(names), len(objects))
    GLib.MainLoop().run()


main()
