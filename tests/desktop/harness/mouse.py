"""Mouse events as a mouse makes them."""

from Xlib import X
from Xlib.ext import xtest

LEFT, MIDDLE, RIGHT = 1, 2, 3


class Mouse:
    """Positions are pixels from the upper left corner of the screen."""

    def __init__(self, display):
        self._display = display

    def move(self, x: int, y: int):
        xtest.fake_input(self._display, X.MotionNotify, x=int(x), y=int(y))
        self._display.sync()

    def press(self, button: int = LEFT):
        xtest.fake_input(self._display, X.ButtonPress, button)
        self._display.sync()

    def release(self, button: int = LEFT):
        xtest.fake_input(self._display, X.ButtonRelease, button)
        self._display.sync()

    def click(self, x: int, y: int, button: int = LEFT):
        self.move(x, y)
        self.press(button)
        self.release(button)
