"""A terminal that runs a counter and writes down every key that reaches it."""

import shutil
from pathlib import Path

from .account import Account
from .processes import Children
from .waiting import wait_until
from .windows import Window, Windows


class Terminal:
    """Started by `open`; the counter never stops by itself."""

    def __init__(self, children: Children, account: Account, windows: Windows):
        self._children = children
        self._account = account
        self._windows = windows
        self._counted = account.home / "terminal-count"
        self._received = account.home / "terminal-keys"

    def open(self) -> Window:
        """Opens the terminal, which has the focus and counts when this returns."""
        program = self._account.base / "counting_program.py"
        shutil.copyfile(Path(__file__).with_name("counting_program.py"), program)
        self._children.start(
            "xterm", ["xterm", "-T", "terminal", "-e", "/usr/bin/python3", program, self._counted, self._received]
        )
        window = self._windows.wait_for("XTerm", "terminal")
        self._windows.wait_until_active(window)
        wait_until(lambda: self._received.exists() and self.count() > 1, "the terminal counts")
        return window

    def count(self) -> int:
        return self._counted.stat().st_size if self._counted.exists() else 0

    def received(self) -> bytes:
        """Every byte that the keyboard sent to the program in the terminal."""
        return self._received.read_bytes()
