"""Panels with a tray: tint2, into which icons put a window, and xfce4-panel, to which they tell what to show."""

from .account import Account
from .brimwick import WINDOW_CLASS
from .mouse import RIGHT
from .processes import Child, Children
from .waiting import wait_until
from .windows import Rectangle, Windows

TINT2, XFCE4_PANEL = "tint2", "xfce4-panel"
TINT2_CONFIGURATION = """panel_items = TSC
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


XFCE_CONFIGURATION = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=8;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
"""
XFCE_ICON_WIDTH = 20
XFCONFD = "/usr/lib/x86_64-linux-gnu/xfce4/xfconf/xfconfd"
# The program in which the panel runs its tray.
PANEL_MENU_CLASS = "Wrapper-2.0"
WATCHER = "org.kde.StatusNotifierWatcher"


def start_tray(host: str, children: Children, account: Account, windows: Windows) -> Child:
    """Starts the panel and waits until its tray takes icons."""
    return {TINT2: _start_tint2, XFCE4_PANEL: _start_xfce4_panel}[host](children, account, windows)


def _start_tint2(children: Children, account: Account, windows: Windows) -> Child:
    configuration = account.base / "tint2rc"
    configuration.write_text(TINT2_CONFIGURATION)
    panel = children.start("tint2", ["tint2", "-c", configuration])
    tray = windows.atom("_NET_SYSTEM_TRAY_S0")
    wait_until(lambda: bool(windows.display.get_selection_owner(tray)), "the panel offers its tray")
    return panel


def _start_xfce4_panel(children: Children, account: Account, windows: Windows) -> Child:
    configuration = account.home / ".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"
    configuration.parent.mkdir(parents=True)
    configuration.write_text(XFCE_CONFIGURATION)
    account.give(account.home)
    children.start("xfconfd", [XFCONFD])
    _wait_for_name("org.xfce.Xfconf", children)
    panel = children.start("xfce4-panel", ["xfce4-panel", "--disable-wm-check"])
    _wait_for_name(WATCHER, children)
    return panel


def _wait_for_name(name: str, children: Children):
    asked = ["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/", "org.freedesktop.DBus.NameHasOwner"]
    wait_until(lambda: b"boolean true" in children.run([*asked, f"string:{name}"]).stdout, f"{name} is on the bus")


class TrayMenu:
    """The menu of Brimwick's icon in the tray."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._opened = 0

    def open(self):
        """By a click on the icon with the right button."""
        icon = self._icon()
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

    def _icon(self) -> Rectangle:
        """Where it is on the screen."""
        windows = self._desktop.windows
        if self._desktop.tray == TINT2:
            return wait_until(lambda: windows.embedded(WINDOW_CLASS), "the icon is in the tray")[0].client
        # The panel draws it itself, at its left end, where it has nothing else.
        panel = windows.wait_for(XFCE4_PANEL).client
        shown = Rectangle(panel.x, panel.y, XFCE_ICON_WIDTH, panel.height)
        wait_until(lambda: len(set(_colours(windows.pixels(shown)))) > 20, "the icon is in the tray")
        return shown

    def _popups(self) -> list:
        windows = self._desktop.windows
        return windows.popups(WINDOW_CLASS if self._desktop.tray == TINT2 else PANEL_MENU_CLASS)


def _colours(pixels: bytes):
    return zip(pixels[::4], pixels[1::4], pixels[2::4])
