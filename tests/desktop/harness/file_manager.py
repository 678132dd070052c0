"""The file manager, used as a person uses it."""

import os
from pathlib import Path
from urllib.parse import unquote_to_bytes

from .account import Account
from .clipboard import Clipboard
from .keyboard import Keyboard
from .processes import Children
from .waiting import wait_until
from .windows import Window, Windows

PROGRAM = "pcmanfm-qt"

SETTINGS = """[Behavior]
ConfirmDelete=false
SingleClick=false
[FolderView]
Mode=detailed
SortColumn=name
SortOrder=ascending
[System]
FallbackIconThemeName=Adwaita
SIUnit=false
[Window]
FixedHeight=480
FixedWidth=800
RememberWindowSize=false
"""


class FileManager:
    """One running file manager with one or more windows; the folder shown is the window's title."""

    def __init__(
        self, children: Children, account: Account, windows: Windows, keyboard: Keyboard, clipboard: Clipboard
    ):
        self._children = children
        self._windows = windows
        self._keyboard = keyboard
        self._clipboard = clipboard
        settings = account.home / ".config/pcmanfm-qt/default/settings.conf"
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text(SETTINGS)
        (account.home / ".config/mimeapps.list").write_text(
            "[Default Applications]\ninode/directory=pcmanfm-qt.desktop\n"
        )
        account.give(account.home / ".config")

    def open(self, folder: Path) -> Window:
        """Shows a folder in a new window, which has the focus when this returns."""
        before = set(self.windows())
        self._children.start(PROGRAM, [PROGRAM, "--new-window", folder])

        def opened():
            return next((w for w in self.windows() if w not in before and w.title == folder.name), None)

        window = wait_until(opened, lambda: f"a window of {folder.name}; there are {self._windows.all()}", 20)
        self._windows.wait_until_active(window)
        return window

    def show_desktop_icons(self) -> Window:
        """Makes the desktop show the files of the user's Desktop folder; returns its window."""
        self._children.start(PROGRAM, [PROGRAM, "--desktop"])

        def shown():
            return next((window for window in self._windows.matching(PROGRAM) if window.is_desktop()), None)

        return wait_until(shown, lambda: f"desktop icons; there are {self._windows.all()}", 20)

    def windows(self) -> list:
        """Its windows that can be seen, without the desktop."""
        found = self._windows.matching(PROGRAM)
        return [window for window in found if window.is_viewable() and not window.is_desktop()]

    def select_all(self, expected, timeout=10.0):
        """Selects everything in the active window, once all the expected paths are listed there."""
        self._select(lambda: self._keyboard.chord("ctrl+a"), expected, timeout)

    def select_first(self, count: int, expected):
        """Selects the topmost items of the active window: the expected paths."""

        def keys():
            self._keyboard.tap("Home")
            with self._keyboard.holding("shift"):
                for _ in range(count - 1):
                    self._keyboard.tap("Down")

        self._select(keys, expected, 10.0)

    def selection(self) -> list:
        """The selected paths as bytes, by copying them: what was on the clipboard is lost."""
        self._keyboard.chord("ctrl+c")
        listed = self._clipboard.read("text/uri-list") or b""
        uris = [line for line in listed.split(b"\r\n") if line.startswith(b"file://")]
        return [unquote_to_bytes(uri[len(b"file://") :]) for uri in uris]

    def _select(self, keys, expected, timeout):
        wanted = sorted(os.fsencode(path) for path in expected)

        def selected():
            keys()
            return sorted(self.selection()) == wanted

        wait_until(selected, lambda: f"{wanted} selected; selected: {self.selection()}", timeout)
