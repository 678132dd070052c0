"""The windows on the display, as the window manager and the X server know them."""

from dataclasses import dataclass

import Xlib.error
from Xlib import X, Xatom

from .waiting import wait_until


@dataclass(frozen=True)
class Rectangle:
    """In pixels, from the upper left corner of the screen."""

    x: int
    y: int
    width: int
    height: int


class Window:
    """One window; every question may be asked again after it is gone, and is then answered with nothing."""

    def __init__(self, windows: "Windows", identifier: int):
        self.identifier = identifier
        self._windows = windows
        self._window = windows.display.create_resource_object("window", identifier)

    def __eq__(self, other):
        return isinstance(other, Window) and other.identifier == self.identifier

    def __hash__(self):
        return hash(self.identifier)

    def __repr__(self):
        return f"<window {self.identifier:#x} {self.wm_class} {self.title!r}>"

    def read_property(self, name, kind=X.AnyPropertyType):
        try:
            value = self._window.get_full_property(self._windows.atom(name), kind)
            return None if value is None else value.value
        except Xlib.error.XError:
            return None

    @property
    def wm_class(self) -> tuple:
        """The pair of instance and class; empty if the window has none."""
        value = self.read_property("WM_CLASS", Xatom.STRING)
        return tuple(part.decode("latin-1") for part in value.split(b"\0")[:2]) if value else ()

    @property
    def title(self) -> str:
        value = self.read_property("_NET_WM_NAME") or self.read_property("WM_NAME")
        return value.decode("utf-8", "replace") if value is not None else ""

    @property
    def pid(self) -> int:
        value = self.read_property("_NET_WM_PID")
        return value[0] if value else 0

    def is_viewable(self) -> bool:
        try:
            return self._window.get_attributes().map_state == X.IsViewable
        except Xlib.error.XError:
            return False

    def is_desktop(self) -> bool:
        kinds = self.read_property("_NET_WM_WINDOW_TYPE") or ()
        return self._windows.atom("_NET_WM_WINDOW_TYPE_DESKTOP") in kinds

    def set_mapped(self, mapped: bool):
        """Shows or withdraws the window, as its own program does."""
        if mapped:
            self._window.map()
        else:
            self._window.unmap()
        self._windows.display.sync()

    def move(self, x: int, y: int):
        """Asks for another place of its upper left corner."""
        self._window.configure(x=x, y=y)
        self._windows.display.sync()

    @property
    def client(self) -> Rectangle:
        """Where its contents lie."""
        geometry = self._window.get_geometry()
        at = self._windows.root.translate_coords(self._window, 0, 0)
        return Rectangle(at.x, at.y, geometry.width, geometry.height)

    @property
    def frame(self) -> Rectangle:
        """Where it lies with its title bar and borders."""
        left, right, top, bottom = self.read_property("_NET_FRAME_EXTENTS") or (0, 0, 0, 0)
        client = self.client
        return Rectangle(
            client.x - left, client.y - top, client.width + left + right, client.height + top + bottom
        )


class Windows:
    """Queries over all windows."""

    def __init__(self, display):
        self.display = display
        self.root = display.screen().root

    def atom(self, name: str) -> int:
        return self.display.get_atom(name)

    def are_managed(self) -> bool:
        return self.root.get_full_property(self.atom("_NET_SUPPORTING_WM_CHECK"), X.AnyPropertyType) is not None

    def all(self) -> list:
        """The managed windows, the lowest first."""
        value = self.root.get_full_property(self.atom("_NET_CLIENT_LIST_STACKING"), Xatom.WINDOW)
        return [Window(self, identifier) for identifier in value.value] if value else []

    def matching(self, wm_class=None, title=None) -> list:
        """Those of one class, or with one title, or both."""
        return [
            window
            for window in self.all()
            if (wm_class is None or wm_class in window.wm_class) and (title is None or title == window.title)
        ]

    def active(self):
        """The window with the keyboard focus by the window manager's word, or None."""
        value = self.root.get_full_property(self.atom("_NET_ACTIVE_WINDOW"), Xatom.WINDOW)
        return Window(self, value.value[0]) if value and value.value[0] else None

    def wait_for(self, wm_class=None, title=None, timeout=10.0) -> Window:
        """Waits for one managed, viewable window."""

        def found():
            return next((w for w in reversed(self.matching(wm_class, title)) if w.is_viewable()), None)

        return wait_until(found, lambda: f"window {wm_class} {title}; there are {self.all()}", timeout)

    def popups(self, wm_class) -> list:
        """The menus of one class that are open, the lowest first; no window manager knows them."""
        found = [Window(self, child.id) for child in self.root.query_tree().children]
        return [window for window in found if wm_class in window.wm_class and window.is_viewable()]

    def embedded(self, wm_class) -> list:
        """The windows of one class inside windows of other programs, such as icons in a tray."""

        def below(window):
            try:
                children = window.query_tree().children
            except Xlib.error.XError:
                return
            for child in children:
                yield child
                yield from below(child)

        found = [Window(self, inner.id) for child in self.root.query_tree().children for inner in below(child)]
        managed = self.all()
        return [w for w in found if wm_class in w.wm_class and w.is_viewable() and w not in managed]

    def pixels(self, area: Rectangle) -> bytes:
        """What the screen shows there."""
        return bytes(self.root.get_image(area.x, area.y, area.width, area.height, X.ZPixmap, 0xFFFFFFFF).data)

    def wait_until_active(self, window: Window, timeout=10.0):
        wait_until(
            lambda: self.active() == window, lambda: f"{window} is active; it is {self.active()}", timeout
        )
