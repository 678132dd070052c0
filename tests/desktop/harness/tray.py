"""A panel with a tray."""

from .account import Account
from .brimwick import WINDOW_CLASS
from .mouse import RIGHT
from .processes import Child, Children
from .waiting import wait_until
from .windows import Windows

CONFIGURATION = """panel_items = TSC
panel_position = bottom center horizontal
panel_size = 100% 30
panel_layer = top
strut_policy = follow_size
systray = 1
time1_format = %H:%M
rounded = 0
border_width = 0
background_color = #333333 100
panel_background_id = 1
"""


def start_tray(children: Children, account: Account, windows: Windows) -> Child:
    """Starts the panel and waits until its tray takes icons."""
    configuration = account.base / "tint2rc"
    configuration.write_text(CONFIGURATION)
    panel = children.start("tint2", ["tint2", "-c", configuration])
    tray = windows.atom("_NET_SYSTEM_TRAY_S0")
    wait_until(lambda: _owned(windows.display, tray), "the panel offers its tray")
    return panel


class TrayMenu:
    """The menu of Brimwick's icon in the tray."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._opened = 0

    def open(self):
        """By a click on the icon with the right button."""
        icon = wait_until(lambda: self._desktop.windows.embedded(WINDOW_CLASS), "the icon is in the tray")[0].client
        # Not twice in one place: soon after the last one, that would be a double click, which opens no menu.
        self._opened += 1
        quarter = 1 + 2 * (self._opened % 2)
        self._desktop.mouse.click(icon.x + icon.width * quarter // 4, icon.y + icon.height // 2, RIGHT)
        wait_until(self._popups, "the menu is open")
        self._desktop.keyboard.wait_until_taken()
        # Away from the menu, where it would choose an item.
        self._desktop.mouse.move(5, 5)

    def choose(self, number: int):
        """Opens the menu and goes down to an item, by its number among those that are enabled, from 1 on."""
        self.open()
        for _ in range(number):
            self._desktop.keyboard.tap("Down")
        self._desktop.keyboard.tap("Return")
        wait_until(lambda: not self._popups(), "the menu is closed")

    def _popups(self) -> list:
        return self._desktop.windows.popups(WINDOW_CLASS)


def _owned(display, selection) -> bool:
    owner = display.get_selection_owner(selection)
    return bool(owner)
