"""The desktop put together."""

import tempfile
from pathlib import Path

from .account import Account
from .brimwick import Brimwick
from .bus import set_bus_address, start_bus
from .clipboard import Clipboard
from .display import start_display
from .file_manager import FileManager
from .keyboard import Keyboard
from .mouse import Mouse
from .notifications import Notifications
from .preferences import Preferences
from .processes import Children
from .screenshot import take_screenshot
from .terminal import Terminal
from .tray import TINT2, start_tray
from .window_manager import OPENBOX, start_window_manager
from .windows import Windows

SURROUNDINGS = {
    "QT_QPA_PLATFORM": "xcb",
    "QT_ACCESSIBILITY": "0",
    "NO_AT_BRIDGE": "1",
    "XDG_CURRENT_DESKTOP": "openbox",
    "XDG_SESSION_TYPE": "x11",
    "SDL_AUDIODRIVER": "dummy",
}


class Desktop:
    """A display, a bus, a window manager, a panel and a notification service, for one user with an empty home.

    A context manager: leaving it ends every program that was started on it, and only those, and deletes the home.
    Each of `bus`, `tray`, the name of a panel, and `notifications` can be left out, as on a desktop that lacks it.
    """

    def __init__(self, size=(2560, 1600), bus=True, tray=TINT2, notifications=True, window_manager=OPENBOX):
        self._folder = tempfile.mkdtemp(prefix="brimwick-desktop-")
        self.account = Account(Path(self._folder))
        self.children = Children(self.account)
        try:
            self._start(size, bus, tray, notifications, window_manager)
        except BaseException:
            self.close()
            raise

    def _start(self, size, bus, tray, notifications, window_manager):
        self.children.environment.update(SURROUNDINGS)
        self.display = start_display(self.children, size)
        self.windows = Windows(self.display)
        set_bus_address(self.children, self.account)
        self.bus = start_bus(self.children, self.account) if bus else None
        start_window_manager(window_manager, self.children, self.account, self.windows)
        self.tray = tray
        if tray:
            start_tray(tray, self.children, self.account, self.windows)
        self.notifications = Notifications(self.children, self.account) if bus and notifications else None
        self.keyboard = Keyboard(self.children, self.display)
        self.mouse = Mouse(self.display)
        self.clipboard = Clipboard(self.children, self.account)
        self.preferences = Preferences(self.account)
        self.file_manager = FileManager(
            self.children, self.account, self.windows, self.keyboard, self.clipboard
        )
        self.terminal = Terminal(self.children, self.account, self.windows)
        self.brimwick = Brimwick(self)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        self.children.stop_all()
        self.account.remove()

    @property
    def home(self) -> Path:
        return self.account.home

    def make_folder(self, *names: str) -> list:
        """Makes folders below the home and returns their paths."""
        folders = [self.home / name for name in names]
        for folder in folders:
            folder.mkdir(parents=True, exist_ok=True)
        self.account.give(self.home)
        return folders

    def make_files(self, folder: Path, contents: dict) -> list:
        """Makes files by name and content, and returns their paths."""
        for name, content in contents.items():
            (folder / name).write_bytes(content)
        self.account.give(folder)
        return [folder / name for name in contents]

    def screenshot(self, path: Path, window=None):
        take_screenshot(self.children, path, window)
