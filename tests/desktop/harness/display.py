"""The display: an X server without a screen, and our own connection to it."""

import os

import Xlib.display

from .processes import Children
from .waiting import wait_until

# Of a held key, in milliseconds.
REPEAT_DELAY = 250
REPEAT_INTERVAL = 40

BACKGROUND = 0x4A6572


def start_display(children: Children, size):
    """Starts an X server on a free display and puts its DISPLAY into the environment of what follows.

    Returns the connection that keys, mouse and window queries go through.
    """
    _make_socket_folder()
    server = children.start(
        "Xvfb",
        ["Xvfb", "-displayfd", "1", "-screen", "0", f"{size[0]}x{size[1]}x24", "-nolisten", "tcp", "-noreset"]
        + ["-ardelay", str(REPEAT_DELAY), "-arinterval", str(REPEAT_INTERVAL)],
    )

    def number():
        if not server.is_running():
            raise RuntimeError(f"the X server ended at once: {server.stderr()}")
        return server.stdout().strip() if server.stdout().endswith("\n") else ""

    name = ":" + wait_until(number, "the X server names its display")
    children.environment["DISPLAY"] = name
    display = Xlib.display.Display(name)
    _paint_background(display)
    return display


def _paint_background(display):
    root = display.screen().root
    root.change_attributes(background_pixel=BACKGROUND)
    root.clear_area()
    display.sync()


def _make_socket_folder():
    # The server makes it only when it runs as root.
    try:
        os.mkdir("/tmp/.X11-unix")
        os.chmod("/tmp/.X11-unix", 0o1777)
    except FileExistsError:
        pass
