"""Tells when a window appears: how often, and to the fraction of a millisecond when it is painted and focused."""

import select
import time

import Xlib.display
from Xlib import X
from Xlib.ext import damage

from .waiting import WaitedTooLong
from .windows import Window, Windows


class MapCounter:
    """Counts how often a window is shown from now on."""

    def __init__(self, display, window: Window):
        self._display = display
        self._identifier = window.identifier
        display.create_resource_object("window", window.identifier).change_attributes(
            event_mask=X.StructureNotifyMask
        )
        display.sync()
        self._maps = 0

    def count(self) -> int:
        self._display.sync()
        while self._display.pending_events():
            event = self._display.next_event()
            if event.type == X.MapNotify and event.window.id == self._identifier:
                self._maps += 1
        return self._maps


class AppearanceWatch:
    """Watches one window, which exists already, through a connection of its own.

    Painted: what was drawn since it was last shown covers the whole window. Focused: the window manager has made it
    the active window. Times are those of time.monotonic, taken when the server's word arrives.
    """

    def __init__(self, display_name: str, window: Window):
        self._display = Xlib.display.Display(display_name)
        self._windows = Windows(self._display)
        self._watched = Window(self._windows, window.identifier)
        client = self._watched.client
        self._size = (client.width, client.height)
        self._active_window = self._windows.atom("_NET_ACTIVE_WINDOW")
        resource = self._display.create_resource_object("window", window.identifier)
        self._display.damage_query_version()
        resource.damage_create(damage.DamageReportRawRectangles)
        resource.change_attributes(event_mask=X.StructureNotifyMask)
        self._windows.root.change_attributes(event_mask=X.PropertyChangeMask)
        self._display.sync()
        self._damage_event = self._display.extension_event.DamageNotify
        self._painted = self._focused = self._drawn = None

    def forget(self):
        """Leaves out everything that has happened so far."""
        self._display.sync()
        while self._display.pending_events():
            self._take(self._display.next_event(), time.monotonic())
        self._painted = self._focused = None
        self._drawn = None

    def wait(self, timeout=5.0):
        """The times (painted, focused) of the next appearance after `forget`."""
        deadline = time.monotonic() + timeout
        while self._painted is None or self._focused is None:
            if not self._display.pending_events():
                select.select([self._display.fileno()], [], [], max(0.0, deadline - time.monotonic()))
                if time.monotonic() >= deadline:
                    raise WaitedTooLong(f"after {timeout:g} s: painted {self._painted}, focused {self._focused}")
                continue
            self._take(self._display.next_event(), time.monotonic())
        return self._painted, self._focused

    def _take(self, event, now):
        if event.type == X.MapNotify:
            self._drawn = None
        elif event.type == X.ConfigureNotify:
            self._size = (event.width, event.height)
        elif event.type == X.PropertyNotify and event.atom == self._active_window:
            self._focused = now if self._windows.active() == self._watched else None
        elif event.type == self._damage_event and self._painted is None:
            self._drawn = _union(self._drawn, event.area)
            left, top, right, bottom = self._drawn
            if right - left >= self._size[0] and bottom - top >= self._size[1]:
                self._painted = now


def _union(box, area):
    """The box (left, top, right, bottom) around another and an area."""
    new = (area.x, area.y, area.x + area.width, area.y + area.height)
    if box is None:
        return new
    return (min(box[0], new[0]), min(box[1], new[1]), max(box[2], new[2]), max(box[3], new[3]))
