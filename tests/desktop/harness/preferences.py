"""Brimwick's preferences file."""

import plistlib
import subprocess

from .account import Account


class Preferences:
    """The file in the user's home; keys that are left out get what the program itself takes for them."""

    def __init__(self, account: Account):
        self._account = account
        self.folder = account.home / "Library/Application Support/Brimwick"
        self.path = self.folder / "BrimwickPreferences.plist"

    def write(self, indexed_folders, **settings):
        """Writes the usual settings, the given ones over them, and the folders to index."""
        self.write_bytes(plistlib.dumps({**USUAL, **settings, "IndexedFolders": [str(f) for f in indexed_folders]}))

    def write_bytes(self, content: bytes):
        self.folder.mkdir(parents=True, exist_ok=True)
        self.path.write_bytes(content)
        self._account.give(self._account.home / "Library")

    def read(self) -> dict:
        with open(self.path, "rb") as file:
            return plistlib.load(file)

    def read_by_another_program(self) -> dict:
        """The same, as a standard tool for property lists reads it."""
        read = subprocess.run(["plistutil", "-i", self.path, "-f", "xml"], check=True, capture_output=True)
        return plistlib.loads(read.stdout)


USUAL = {
    "HotKeyCode": "46",
    "HotKeyModifierFlags": "1310985",
    "CopyModeHotKeyCode": "35",
    "CopyModeHotKeyModifierFlags": "1310985",
    "OpenModeHotKeyCode": "31",
    "OpenModeHotKeyModifierFlags": "1310985",
    "NotificationSoundOnLaunch": False,
    "NotificationSoundOnMove": True,
    "NotificationSoundOnCopy": True,
    "NotificationSoundOnOpen": True,
    "NotificationSoundOnInitializeIndex": False,
    "NotificationSoundOnRebuildIndexForPreference": False,
    "NotificationSoundOnRebuildIndexForSubfolder": False,
    "NotificationAnimateOnInitializeIndex": False,
    "NotificationAnimateOnRebuildIndexForPreference": False,
    "NotificationAnimateOnRebuildIndexForSubfolder": False,
    "NotificationPopupOnInitializeIndex": False,
    "NotificationPopupOnRebuildIndexForPreference": False,
    "NotificationPopupOnRebuildIndexForSubfolder": False,
    "NotificationAnimationStyle": 0,
    "WickWindowHeight": "572",
    "WickWindowWidth": "520",
}
