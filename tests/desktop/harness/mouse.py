"""Mouse events as a mouse makes them."""

import time

from Xlib import X
from Xlib.ext import xtest

LEFT, MIDDLE, RIGHT = 1, 2, 3
STEPS_OF_DRAG, SECONDS_OF_DRAG = 40, 0.8


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

    def drag(self, start: tuple, end: tuple):
        """As a hand does it, in many small steps: a drag begins, enters and is asked about before it is dropped."""
        self.move(*start)
        self.press()
        for step in range(1, STEPS_OF_DRAG + 1):
            self.move(*(begin + (finish - begin) * step // STEPS_OF_DRAG for begin, finish in zip(start, end)))
            time.sleep(SECONDS_OF_DRAG / STEPS_OF_DRAG)
        self.release()

    def click(self, x: int, y: int, button: int = LEFT):
        self.move(x, y)
        self.press(button)
        self.release(button)
