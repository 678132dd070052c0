"""The preferences window: where its controls lie, and what can be seen of them."""

from .picker import COPY, MOVE, OPEN
from .windows import Rectangle, Window, Windows

TITLE = "Brimwick Preferences"

# Distances of the layout, in pixels from the upper left corner of the window's contents.
FIELD_X = 314
FIELD_Y = {MOVE: 86, COPY: 148, OPEN: 210}
NOTIFICATIONS_TAB = (131, 23)
# By their keys, in the order of Tab.
CHECK_BOXES = {
    "NotificationSoundOnMove": (40, 84),
    "NotificationSoundOnCopy": (193, 84),
    "NotificationSoundOnOpen": (347, 84),
    "NotificationAnimateOnInitializeIndex": (40, 175),
    "NotificationSoundOnInitializeIndex": (195, 175),
    "NotificationPopupOnInitializeIndex": (349, 175),
    "NotificationAnimateOnRebuildIndexForPreference": (40, 221),
    "NotificationSoundOnRebuildIndexForPreference": (195, 221),
    "NotificationPopupOnRebuildIndexForPreference": (349, 221),
    "NotificationAnimateOnRebuildIndexForSubfolder": (40, 267),
    "NotificationSoundOnRebuildIndexForSubfolder": (195, 267),
    "NotificationPopupOnRebuildIndexForSubfolder": (349, 267),
}
INDEXED_FOLDERS = (314, 360)
RESTART = (444, 493)
PULSE, ROTATE = (78, 347), (142, 347)
MESSAGE_BELOW = 14
MESSAGE_HEIGHT = 30


class PreferencesWindow:
    def __init__(self, windows: Windows, window: Window):
        self._windows = windows
        self.window = window

    def field(self, mode: str):
        """The middle of a hot key's field on the screen."""
        return self.at((FIELD_X, FIELD_Y[mode]))

    def notifications_tab(self):
        return self.at(NOTIFICATIONS_TAB)

    def at(self, place: tuple):
        """A place of the contents on the screen."""
        client = self.window.client
        return client.x + place[0], client.y + place[1]

    def pixels(self) -> bytes:
        """What the screen shows of its contents."""
        return self._windows.pixels(self.window.client)

    def shows_note(self, mode: str) -> bool:
        """Whether there is any text below the field."""
        pixels = self._below(mode)
        return any(max(channel) - min(channel) > 60 for channel in (pixels[::4], pixels[1::4], pixels[2::4]))

    def shows_error(self, mode: str) -> bool:
        """Whether there is something red below the field."""
        pixels = self._below(mode)
        return any(
            red > blue + 80 and red > green + 80 for blue, green, red in zip(pixels[::4], pixels[1::4], pixels[2::4])
        )

    def _below(self, mode: str) -> bytes:
        x, y = self.field(mode)
        return self._windows.pixels(Rectangle(x - 150, y + MESSAGE_BELOW, 300, MESSAGE_HEIGHT))

    def edge(self, mode: str) -> bytes:
        """What the screen shows of the field's left edge, which looks otherwise when the field has the focus."""
        x, y = self.field(mode)
        return self._windows.pixels(Rectangle(x - 190, y - 6, 8, 12))

    def shown_hot_key(self, mode: str) -> bytes:
        """What the screen shows in the field."""
        x, y = self.field(mode)
        return self._windows.pixels(Rectangle(x - 60, y - 8, 120, 16))
