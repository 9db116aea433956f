"""A tray for the session bus, as far as the toolkit asks it, with a user who chooses from the menu of the one icon in it.

  dbus-run-session -- python3 faketray.py "LABEL/LABEL,LABEL" COMMAND...

Runs the command and follows each path of labels (between commas) through the menus, printing the labels of every menu
that is opened on a line; a label "?" opens nothing. The exit code is the command's; one that shows no icon, or goes on
for longer than 20 seconds, is killed, and so ends with 99.
"""

import subprocess
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

WATCHER = "org.kde.StatusNotifierWatcher"
PROPERTIES = "org.freedesktop.DBus.Properties"
DESCRIPTION = f"""<node><interface name="{WATCHER}">
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
</interface></node>"""
PATIENCE = 20  # seconds


class Watcher(dbus.service.Object):
    @dbus.service.method(WATCHER, in_signature="s", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, service, sender):
        # When the call has been answered: the icon waits for that.
        GLib.timeout_add(100, lambda: follow_all(sender))

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return True

    @dbus.service.method(dbus.INTROSPECTABLE_IFACE, out_signature="s")
    def Introspect(self):
        return DESCRIPTION


def follow_all(service):
    item = dbus.Interface(bus.get_object(service, "/StatusNotifierItem"), PROPERTIES)
    menu = dbus.Interface(bus.get_object(service, item.Get("org.kde.StatusNotifierItem", "Menu")),
                          "com.canonical.dbusmenu")
    for path in sys.argv[1].split(","):
        at = 0
        for label in path.split("/"):
            menu.AboutToShow(at)
            children = menu.GetLayout(at, 1, ["label"])[1][2]
            labels = {str(child[1].get("label", "---")): child[0] for child in children}
            print(" | ".join(labels), flush=True)
            if label not in labels:
                break
            at = labels[label]
        else:
            menu.Event(at, "clicked", dbus.String("", variant_level=1), dbus.UInt32(0))
    return False


def poll():
    if command.poll() is not None:
        loop.quit()
    return True


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
name = dbus.service.BusName(WATCHER, bus)
watcher = Watcher(bus, "/StatusNotifierWatcher")
loop = GLib.MainLoop()
command = subprocess.Popen(sys.argv[2:])
GLib.timeout_add(50, poll)
GLib.timeout_add_seconds(PATIENCE, loop.quit)
loop.run()
if command.poll() is None:
    command.kill()
    sys.exit(99)
sys.exit(command.returncode)
