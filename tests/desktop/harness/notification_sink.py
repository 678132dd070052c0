"""A notification service that shows nothing: it appends every call to a file, one JSON object per line.

A program of its own; its argument is the file. It writes "ready" to its output once it owns the name.
"""

import json
import sys
import time

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

INTERFACE = "org.freedesktop.Notifications"


class NotificationSink(dbus.service.Object):
    """Answers what desktops answer; identifiers count up from 1."""

    def __init__(self, bus, path):
        name = dbus.service.BusName(INTERFACE, bus, do_not_queue=True)
        super().__init__(name, "/org/freedesktop/Notifications")
        self._log = open(path, "a", encoding="utf-8")
        self._last_identifier = 0

    @dbus.service.method(INTERFACE, in_signature="susssasa{sv}i", out_signature="u")
    def Notify(self, application, replaced, icon, summary, body, actions, hints, expiry):
        self._last_identifier += 1
        call = {
            "application": application,
            "replaced": int(replaced),
            "icon": icon,
            "summary": summary,
            "body": body,
            "actions": list(actions),
            "hints": {key: str(value) for key, value in hints.items()},
            "expiry": int(expiry),
            "arrived": time.time(),
        }
        self._log.write(json.dumps(call) + "\n")
        self._log.flush()
        return self._last_identifier

    @dbus.service.method(INTERFACE, in_signature="u")
    def CloseNotification(self, identifier):
        pass

    @dbus.service.method(INTERFACE, out_signature="as")
    def GetCapabilities(self):
        return ["body", "body-markup"]

    @dbus.service.method(INTERFACE, out_signature="ssss")
    def GetServerInformation(self):
        return ("sink", "brimwick", "1", "1.2")


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    sink = NotificationSink(dbus.SessionBus(), sys.argv[1])
    print("ready", flush=True)
    GLib.MainLoop().run()
    return sink


if __name__ == "__main__":
    main()
