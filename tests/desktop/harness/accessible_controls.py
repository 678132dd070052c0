"""Prints what the accessibility bus tells of a window, as a program of the desktop's user:

accessible_controls.py TITLE

One JSON object a line for every control that can be seen.
"""

import json
import sys

import dbus
import dbus.bus

ROOT = "/org/a11y/atspi/accessible/root"
ACCESSIBLE = "org.a11y.atspi.Accessible"
SHOWING = 25
ON_THE_SCREEN = dbus.UInt32(0)


def accessibility_bus() -> dbus.bus.BusConnection:
    launcher = dbus.SessionBus().get_object("org.a11y.Bus", "/org/a11y/bus")
    return dbus.bus.BusConnection(launcher.GetAddress(dbus_interface="org.a11y.Bus"))


class Tree:
    def __init__(self, bus):
        self._bus = bus

    def window(self, title: str):
        """The window's place on the bus, or None."""
        for application in self.children("org.a11y.atspi.Registry", ROOT):
            for place in self.children(*application):
                if self._property(place, "Name") == title:
                    return place
        return None

    def seen_below(self, place):
        control = self._control(place)
        if SHOWING not in control["states"]:
            return
        yield control
        for child in self.children(*place):
            yield from self.seen_below(child)

    def children(self, name, path) -> list:
        return [(str(bus), str(child)) for bus, child in self._interface((name, path), ACCESSIBLE).GetChildren()]

    def _control(self, place) -> dict:
        accessible = self._interface(place, ACCESSIBLE)
        low, high = accessible.GetState()
        bits = int(low) | int(high) << 32
        extents = self._interface(place, "org.a11y.atspi.Component").GetExtents(ON_THE_SCREEN)
        return {
            "role": str(accessible.GetRoleName()),
            "name": str(self._property(place, "Name")),
            "description": str(self._property(place, "Description")),
            "states": [bit for bit in range(64) if bits >> bit & 1],
            "place": [int(number) for number in extents],
        }

    def _property(self, place, name):
        return self._interface(place, dbus.PROPERTIES_IFACE).Get(ACCESSIBLE, name)

    def _interface(self, place, interface) -> dbus.Interface:
        return dbus.Interface(self._bus.get_object(*place, introspect=False), interface)


def main():
    tree = Tree(accessibility_bus())
    window = tree.window(sys.argv[1])
    for control in tree.seen_below(window) if window else ():
        print(json.dumps(control))


if __name__ == "__main__":
    main()
