"""The clipboard, held and read by clients of our own."""

import subprocess

from .account import Account
from .processes import Child, Children
from .waiting import wait_until

TEXT = "UTF8_STRING"


class Clipboard:
    """Contents are bytes, by the type that they are offered as."""

    def __init__(self, children: Children, account: Account):
        self._children = children
        self._account = account
        self._owned = 0

    def hold(self, content: bytes, kind: str = TEXT) -> Child:
        """Becomes the owner of the clipboard with one content, as a program with something copied in it; returns that
        program."""
        source = self._account.base / f"clipboard-{self._owned}"
        source.write_bytes(content)
        self._owned += 1
        owner = self._children.start(
            "xclip", ["xclip", "-quiet", "-selection", "clipboard", "-t", kind, "-i", source]
        )
        wait_until(lambda: self.read(kind) == content, f"the clipboard holds the {kind}")
        return owner

    def empty(self):
        """Leaves the clipboard without an owner, as after the program that held it has ended."""
        self.hold(b"to be forgotten").stop()
        wait_until(lambda: self.kinds() == [], "the clipboard is empty")

    def read(self, kind: str = TEXT):
        """The content as bytes, or None if nobody offers that type."""
        if kind != "TARGETS" and kind not in self.kinds():
            return None
        try:
            answer = self._children.run(["xclip", "-selection", "clipboard", "-t", kind, "-o"], timeout=5)
        except subprocess.TimeoutExpired:
            return None
        return answer.stdout if answer.returncode == 0 else None

    def kinds(self) -> list:
        """The types on offer."""
        return (self.read("TARGETS") or b"").decode().split()
