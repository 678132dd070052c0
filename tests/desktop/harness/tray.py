"""A panel with a tray."""

from .account import Account
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


def _owned(display, selection) -> bool:
    owner = display.get_selection_owner(selection)
    return bool(owner)
