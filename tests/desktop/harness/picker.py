"""Where the picker's controls lie, for the mouse.

The program offers nothing to tests, so these are the distances of its layout: of the window's contents, in pixels
from its upper left corner.
"""

from .windows import Rectangle, Window

MOVE, COPY, OPEN = "Move", "Copy", "Open"

HOT_KEYS = {MOVE: "ctrl+super+m", COPY: "ctrl+super+p", OPEN: "ctrl+super+o"}

MARGIN = 14
BUTTON_STRIP = 52
ROW_HEIGHT = 48
# The upper edge of the list of results, with and without the box of the selected files.
RESULTS_TOP = {MOVE: 178, COPY: 178, OPEN: 51}
SEARCH_FIELD_Y = {MOVE: 155, COPY: 155, OPEN: 24}
FIRST_SELECTED_FILE_Y = 46
SELECTED_FILE_HEIGHT = 26
CONFIRM_BUTTON_WIDTH = 94


class PickerPlaces:
    """Points of the picker on the screen, for its present place and size."""

    def __init__(self, window: Window, mode: str):
        self._client = window.client
        self._mode = mode

    def result(self, row: int):
        return self._at(120, RESULTS_TOP[self._mode] + 1 + row * ROW_HEIGHT + ROW_HEIGHT // 2)

    def selected_file(self, row: int):
        return self._at(120, FIRST_SELECTED_FILE_Y + row * SELECTED_FILE_HEIGHT)

    def search_field(self):
        return self._at(200, SEARCH_FIELD_Y[self._mode])

    def confirm_button(self):
        return self._at(self._client.width - MARGIN - CONFIRM_BUTTON_WIDTH // 2, self._button_y())

    def show_button(self):
        return self._at(self._client.width - MARGIN - CONFIRM_BUTTON_WIDTH - 60, self._button_y())

    def close_button(self):
        return self._at(MARGIN + 30, self._button_y())

    def selected_files_area(self) -> Rectangle:
        """Where the names of the selected files are."""
        return Rectangle(*self._at(MARGIN + 10, FIRST_SELECTED_FILE_Y - 10), self._client.width - 60, 60)

    def results_area(self) -> Rectangle:
        """The first rows of what was found, without the scroll bar."""
        top = RESULTS_TOP[self._mode] + 1
        return Rectangle(*self._at(MARGIN + 2, top), self._client.width - 4 * MARGIN, 4 * ROW_HEIGHT)

    def lower_right_corner(self):
        return self._at(self._client.width - 4, self._client.height - 4)

    def _button_y(self):
        return self._client.height - BUTTON_STRIP // 2

    def _at(self, x, y):
        return self._client.x + x, self._client.y + y
