"""Key events as a keyboard makes them: each key is pressed, held and released by itself."""

from contextlib import contextmanager

from Xlib import XK, X
from Xlib.display import Display
from Xlib.ext import xtest

from .waiting import wait_until

XK.load_keysym_group("xkb")  # the dead keys

NAMES = {
    "ctrl": "Control_L",
    "shift": "Shift_L",
    "alt": "Alt_L",
    "super": "Super_L",
}


class Keyboard:
    """Keys are named by their keysym ("Return", "m", "F4") or as ctrl, shift, alt, super."""

    def __init__(self, children, display):
        self._children = children
        self._display = display
        self._own_display = None

    def set_layout(self, *arguments: str):
        """Changes the keyboard, as `setxkbmap` is told to."""
        self._children.run(["setxkbmap", *arguments]).check_returncode()
        # A connection keeps the map that it began with.
        name = self._display.get_display_name()
        if self._own_display:
            self._own_display.close()
        self._display = self._own_display = Display(name)

    def press(self, key: str):
        self._fake(X.KeyPress, key)

    def release(self, key: str):
        self._fake(X.KeyRelease, key)

    def tap(self, key: str):
        self.press(key)
        self.release(key)

    @contextmanager
    def holding(self, *keys):
        """Holds keys down, pressed in this order and released in the opposite one, whatever happens."""
        pressed = []
        try:
            for key in keys:
                self.press(key)
                pressed.append(key)
            yield
        finally:
            for key in reversed(pressed):
                self.release(key)

    def chord(self, combination: str):
        """Presses such as "ctrl+super+m" and lets go again, the last key first."""
        *modifiers, key = combination.split("+")
        with self.holding(*modifiers):
            self.tap(key)

    def type(self, text: str):
        """Types printable ASCII as on the layout of the display."""
        for character in text:
            keysym = ord(character)
            code = self._display.keysym_to_keycode(keysym)
            shifted = self._display.keycode_to_keysym(code, 0) != keysym
            with self.holding(*(["shift"] if shifted else [])):
                xtest.fake_input(self._display, X.KeyPress, code)
                xtest.fake_input(self._display, X.KeyRelease, code)
        self._display.sync()

    def held(self) -> list:
        """The key codes that the server believes to be down."""
        keymap = self._display.query_keymap()
        return [code for code in range(8, 256) if keymap[code // 8] >> (code % 8) & 1]

    def wait_until_free(self):
        """Waits until no program keeps the keys to itself, as a window manager does while a window is resized."""
        wait_until(self._is_free, "the keyboard is free")

    def wait_until_taken(self):
        """Waits until a program keeps the keys to itself, as an open menu does."""
        wait_until(lambda: not self._is_free(), "a program has taken the keyboard")

    def _is_free(self) -> bool:
        root = self._display.screen().root
        free = root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime) == X.GrabSuccess
        if free:
            self._display.ungrab_keyboard(X.CurrentTime)
            self._display.sync()
        return free

    def code(self, key: str) -> int:
        code = self._display.keysym_to_keycode(XK.string_to_keysym(NAMES.get(key, key)))
        if code == 0:
            raise ValueError(f"no key {key!r} on this keyboard")
        return code

    def _fake(self, kind, key):
        xtest.fake_input(self._display, kind, self.code(key))
        self._display.sync()
