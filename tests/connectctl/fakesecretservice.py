"""A Secret Service for the session bus, as far as libsecret asks it, round one command.

  dbus-run-session -- python3 fakesecretservice.py MODE STATE COMMAND...

MODE: open; locked: the collection and its items are locked; hang: takes calls and never answers. STATE is the file that
keeps the items from run to run. Standard input and both outputs are the command's, and so is the exit code. A call that
would ask the user ends the run with 99.
"""

import json
import os
import pathlib
import subprocess
import sys
import threading

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

ROOT = "/org/freedesktop/secrets"
COLLECTION = ROOT + "/collection/login"
SERVICE = "org.freedesktop.Secret.Service"
PROPERTIES = "org.freedesktop.DBus.Properties"
mode, state = sys.argv[1], pathlib.Path(sys.argv[2])
items = json.loads(state.read_text()) if state.exists() else []


def item_path(number):
    return dbus.ObjectPath(f"{COLLECTION}/{number}")


def secret_of(session, number):
    text = items[number]["secret"].encode()
    return dbus.Struct((session, dbus.ByteArray(b""), dbus.ByteArray(text), "text/plain"), signature="oayays")


class Node(dbus.service.Object):
    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        return self.properties()

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return self.properties()[name]


class Item(Node):
    def __init__(self, bus, number):
        super().__init__(bus, item_path(number))
        self.number = number

    def properties(self):
        attributes = dbus.Dictionary(items[self.number]["attributes"], signature="ss")
        return {"Locked": mode == "locked", "Attributes": attributes, "Label": "key", "Created": dbus.UInt64(1),
                "Modified": dbus.UInt64(1)}


class Collection(Node):
    def properties(self):
        paths = dbus.Array(map(item_path, range(len(items))), signature="o")
        return {"Items": paths, "Label": "login", "Locked": mode == "locked", "Created": dbus.UInt64(1),
                "Modified": dbus.UInt64(1)}

    @dbus.service.method("org.freedesktop.Secret.Collection", in_signature="a{sv}(oayays)b", out_signature="oo")
    def CreateItem(self, properties, secret, replace):
        assert mode != "locked"
        attributes = properties["org.freedesktop.Secret.Item.Attributes"]
        items.append({"attributes": {str(k): str(v) for k, v in attributes.items()},
                      "secret": bytes(secret[2]).decode()})
        state.write_text(json.dumps(items))
        Item(bus, len(items) - 1)
        return item_path(len(items) - 1), dbus.ObjectPath("/")


class Service(Node):
    def properties(self):
        return {"Collections": dbus.Array([dbus.ObjectPath(COLLECTION)], signature="o")}

    @dbus.service.method(SERVICE, in_signature="sv", out_signature="vo", async_callbacks=("done", "failed"))
    def OpenSession(self, algorithm, given, done, failed):
        if mode == "hang":
            return
        if algorithm != "plain":
            failed(dbus.DBusException("plain only", name="org.freedesktop.DBus.Error.NotSupported"))
        else:
            done(dbus.String("", variant_level=1), dbus.ObjectPath(ROOT + "/session/1"))

    @dbus.service.method(SERVICE, in_signature="a{ss}", out_signature="aoao")
    def SearchItems(self, wanted):
        found = dbus.Array([item_path(i) for i, item in enumerate(items)
                            if all(item["attributes"].get(k) == v for k, v in wanted.items())], signature="o")
        none = dbus.Array([], signature="o")
        return (none, found) if mode == "locked" else (found, none)

    @dbus.service.method(SERVICE, in_signature="aoo", out_signature="a{o(oayays)}")
    def GetSecrets(self, paths, session):
        assert mode != "locked"
        return dbus.Dictionary({path: secret_of(session, int(path.rsplit("/", 1)[1])) for path in paths},
                               signature="o(oayays)")

    @dbus.service.method(SERVICE, in_signature="s", out_signature="o")
    def ReadAlias(self, name):
        return dbus.ObjectPath(COLLECTION if name == "default" else "/")

    @dbus.service.method(SERVICE, in_signature="ao", out_signature="aoo")
    def Unlock(self, paths):
        os._exit(99)


def run_command():
    result = subprocess.run(sys.argv[3:], check=False)
    os._exit(result.returncode)


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
name = dbus.service.BusName("org.freedesktop.secrets", bus)
Service(bus, ROOT)
Collection(bus, COLLECTION)
for index in range(len(items)):
    Item(bus, index)
threading.Thread(target=run_command).start()
GLib.MainLoop().run()
