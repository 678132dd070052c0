"""A complete desktop of its own for driving Brimwick from outside: display, bus, window manager, file manager, user.

`Desktop` puts it together; the tests, the guided demonstration and the benchmark all use it.
"""

from .desktop import Desktop
from .waiting import WaitedTooLong, wait_until

__all__ = ["Desktop", "WaitedTooLong", "wait_until"]
