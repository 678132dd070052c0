"""Tells when a window appears: how often, and to the fraction of a millisecond when it is painted and focused; and when
a part of it is painted anew."""

import select
import time

import Xlib.display
from Xlib import X
from Xlib.ext import damage

from .waiting import WaitedTooLong
from .windows import Rectangle, Window, Windows


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


class _DrawingListener:
    """Hears of every drawing into one window, which exists already, through a connection of its own.

    Times are those of time.monotonic, taken when the server's word arrives.
    """

    def __init__(self, display_name: str, window: Window):
        self._display = Xlib.display.Display(display_name)
        self._windows = Windows(self._display)
        self._watched = Window(self._windows, window.identifier)
        self._resource = self._display.create_resource_object("window", window.identifier)
        self._display.damage_query_version()
        self._resource.damage_create(damage.DamageReportRawRectangles)
        self._display.sync()
        self._damage_event = self._display.extension_event.DamageNotify

    def _next_event(self, deadline):
        """The next event, or None when there is none until the deadline."""
        while not self._display.pending_events():
            if time.monotonic() >= deadline:
                return None
            select.select([self._display.fileno()], [], [], max(0.0, deadline - time.monotonic()))
        return self._display.next_event()

    def _pass_over_events(self):
        self._display.sync()
        while self._display.pending_events():
            self._take(self._display.next_event(), time.monotonic())


class AppearanceWatch(_DrawingListener):
    """Watches one window appear.

    Painted: what was drawn since it was last shown covers the whole window. Focused: the window manager has made it
    the active window.
    """

    def __init__(self, display_name: str, window: Window):
        super().__init__(display_name, window)
        client = self._watched.client
        self._size = (client.width, client.height)
        self._active_window = self._windows.atom("_NET_ACTIVE_WINDOW")
        self._resource.change_attributes(event_mask=X.StructureNotifyMask)
        self._windows.root.change_attributes(event_mask=X.PropertyChangeMask)
        self._display.sync()
        self._painted = self._focused = self._drawn = None

    def forget(self):
        """Leaves out everything that has happened so far."""
        self._pass_over_events()
        self._painted = self._focused = None
        self._drawn = None

    def wait(self, timeout=5.0):
        """The times (painted, focused) of the next appearance after `forget`."""
        deadline = time.monotonic() + timeout
        while self._painted is None or self._focused is None:
            event = self._next_event(deadline)
            if event is None:
                raise WaitedTooLong(f"after {timeout:g} s: painted {self._painted}, focused {self._focused}")
            self._take(event, time.monotonic())
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


class PaintWatch(_DrawingListener):
    """Watches one part of a window, given as it lies on the screen, being painted anew."""

    def __init__(self, display_name: str, window: Window, part: Rectangle):
        super().__init__(display_name, window)
        self._part = part
        client = self._watched.client
        self._left, self._top = part.x - client.x, part.y - client.y
        self._right, self._bottom = self._left + part.width, self._top + part.height
        self._painted = None

    def forget(self):
        """Leaves out everything that has happened so far."""
        self._pass_over_events()
        self._painted = None

    def wait(self, timeout=5.0) -> float:
        """The time of the next painting after `forget` or the last `wait`."""
        deadline = time.monotonic() + timeout
        self._painted = None
        while self._painted is None:
            event = self._next_event(deadline)
            if event is None:
                raise WaitedTooLong(f"after {timeout:g} s nothing was painted there")
            self._take(event, time.monotonic())
        return self._painted

    def wait_until_settled(self, stillness=0.1, timeout=5.0) -> float:
        """The time of the painting that made the part look as it does when nothing has been painted there for
        `stillness` seconds; there must be one."""
        looks = [(self.wait(timeout), self._windows.pixels(self._part))]
        while True:
            try:
                looks.append((self.wait(stillness), self._windows.pixels(self._part)))
            except WaitedTooLong:
                break
        settled = looks[-1]
        for look in reversed(looks):
            if look[1] != settled[1]:
                break
            settled = look
        return settled[0]

    def _take(self, event, now):
        if event.type != self._damage_event:
            return
        area = event.area
        beside = area.x >= self._right or area.x + area.width <= self._left
        if not beside and area.y < self._bottom and area.y + area.height > self._top:
            self._painted = now


def _union(box, area):
    """The box (left, top, right, bottom) around another and an area."""
    new = (area.x, area.y, area.x + area.width, area.y + area.height)
    if box is None:
        return new
    return (min(box[0], new[0]), min(box[1], new[1]), max(box[2], new[2]), max(box[3], new[3]))
