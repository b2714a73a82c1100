#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Stands in for Avahi on the bus that the environment names: what one program announces the others find, at 127.0.0.1. It speaks the part of
Avahi's interface that is used here, in Avahi's words."""
import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

AVAHI = "org.freedesktop.Avahi"
LOCAL, OUR_OWN = 8, 16


class Network:
    """What is announced, and who looks for it."""

    services, browsers, made = {}, [], 0

    @classmethod
    def path(cls, kind):
        cls.made += 1
        return f"/Client1/{kind}{cls.made}"


class Group(dbus.service.Object):
    def __init__(self, bus, owner):
        super().__init__(bus, Network.path("EntryGroup"))
        self.owner, self.waiting = owner, []

    @dbus.service.method(AVAHI + ".EntryGroup", in_signature="iiussssqaay")
    def AddService(self, _interface, _protocol, _flags, name, kind, _domain, _host, port, _texts):
        if name in Network.services:
            raise dbus.DBusException("Local name collision", name=AVAHI + ".CollisionError")
        self.waiting.append((str(name), str(kind), int(port)))

    @dbus.service.method(AVAHI + ".EntryGroup")
    def Commit(self):
        for name, kind, port in self.waiting:
            Network.services[name] = (self, kind, port)
            for browser in Network.browsers:
                browser.tell(name)
        self.waiting = []

    @dbus.service.method(AVAHI + ".EntryGroup")
    def Reset(self):
        self.waiting = []
        for name in [name for name, (group, _, _) in Network.services.items() if group is self]:
            _, kind, _ = Network.services.pop(name)
            for browser in Network.browsers:
                for protocol in (0, 1):
                    browser.ItemRemove(-1, protocol, name, kind, "local", dbus.UInt32(LOCAL))

    @dbus.service.method(AVAHI + ".EntryGroup")
    def Free(self):
        self.Reset()
        self.remove_from_connection()

    @dbus.service.signal(AVAHI + ".EntryGroup", signature="is")
    def StateChanged(self, state, error):
        pass


class Browser(dbus.service.Object):
    def __init__(self, bus, owner, kind):
        super().__init__(bus, Network.path("ServiceBrowser"))
        self.owner, self.kind = owner, kind

    def tell(self, name):
        group, kind, _ = Network.services[name]
        if kind != self.kind:
            return
        flags = dbus.UInt32(LOCAL | (OUR_OWN if group.owner == self.owner else 0))
        for protocol in (0, 1):
            self.ItemNew(-1, protocol, name, kind, "local", flags)

    @dbus.service.method(AVAHI + ".ServiceBrowser")
    def Free(self):
        Network.browsers.remove(self)
        self.remove_from_connection()

    @dbus.service.signal(AVAHI + ".ServiceBrowser", signature="iisssu")
    def ItemNew(self, interface, protocol, name, kind, domain, flags):
        pass

    @dbus.service.signal(AVAHI + ".ServiceBrowser", signature="iisssu")
    def ItemRemove(self, interface, protocol, name, kind, domain, flags):
        pass


class Server(dbus.service.Object):
    """The daemon's first object."""

    @dbus.service.method(AVAHI + ".Server", out_signature="o", sender_keyword="sender")
    def EntryGroupNew(self, sender):
        return Group(self.connection, sender).__dbus_object_path__

    @dbus.service.method(AVAHI + ".Server", in_signature="s", out_signature="s")
    def GetAlternativeServiceName(self, name):
        return name + " #2"

    @dbus.service.method(AVAHI + ".Server", in_signature="iissu", out_signature="o", sender_keyword="sender")
    def ServiceBrowserNew(self, _interface, _protocol, kind, _domain, _flags, sender):
        browser = Browser(self.connection, sender, kind)
        Network.browsers.append(browser)
        # Its first words come before its path does, as they may.
        for name in Network.services:
            browser.tell(name)
        return browser.__dbus_object_path__

    @dbus.service.method(AVAHI + ".Server", in_signature="iisssiu", out_signature="iissssisqaayu")
    def ResolveService(self, interface, protocol, name, kind, domain, _wanted, flags):
        port = Network.services[name][2]
        return interface, protocol, name, kind, domain, "nobody-knows.local", 0, "127.0.0.1", port, dbus.Array([], signature="ay"), flags


def left(name, before, now):
    """A program that ends takes what it announced along."""
    if now or not before:
        return
    for group in {group for group, _, _ in Network.services.values() if group.owner == before}:
        group.Reset()
    Network.browsers[:] = [browser for browser in Network.browsers if browser.owner != before]


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SystemBus()
    server = Server(bus, "/")
    bus.add_signal_receiver(left, "NameOwnerChanged", "org.freedesktop.DBus")
    name = dbus.service.BusName(AVAHI, bus)
    print("ready", flush=True)
    GLib.MainLoop().run()
    return server, name


main()
