"""Hot keys, recorded in the preferences window with real keys."""

from contextlib import contextmanager

from Xlib import X
from Xlib.display import Display

from harness import wait_until
from harness.picker import COPY, MOVE, OPEN
from harness.waiting import holds_for


class Recording:
    """Brimwick runs, and its preferences window is in front."""

    def __init__(self, filing):
        self.filing = filing
        self.desktop = filing.desktop
        filing.show_selected({"a.txt": b"a"})
        self.window = None
        self.show()

    def show(self):
        self.filing.invoke(OPEN)
        self.desktop.keyboard.chord("ctrl+comma")
        self.window = self.desktop.brimwick.wait_for_preferences_window()

    def close(self):
        self.desktop.keyboard.tap("Escape")
        self.desktop.brimwick.wait_until_preferences_are_hidden()
        self.filing.wait_until_files_are_back_in_front()

    def press(self, combination: str):
        self.desktop.keyboard.chord(combination)

    def go_to(self, mode: str):
        """By Tab, from the first field."""
        fields = (MOVE, COPY, OPEN)
        for field in fields[1 : fields.index(mode) + 1]:
            before = self.window.edge(field)
            self.press("Tab")
            wait_until(lambda: self.window.edge(field) != before, f"the field of {field} has the focus")

    def stored(self, mode=MOVE) -> tuple:
        prefix = {MOVE: "", COPY: "CopyMode", OPEN: "OpenMode"}[mode]
        stored = self.desktop.preferences.read()
        return stored[f"{prefix}HotKeyCode"], int(stored[f"{prefix}HotKeyModifierFlags"])

    def wait_until_stored(self, code, mode=MOVE):
        wait_until(lambda: self.stored(mode)[0] == code, lambda: f"{code} is stored; it is {self.stored(mode)}")
        assert self.desktop.preferences.read_by_another_program() == self.desktop.preferences.read()

    def wait_until_works(self, mode):
        wait_until(lambda: not self.window.shows_note(mode), f"the hot key of {mode} is shown as active")

    def wait_for_error(self, mode=MOVE):
        wait_until(lambda: self.window.shows_error(mode), f"an error is shown below the field of {mode}")
        others = [other for other in (MOVE, COPY, OPEN) if other != mode]
        assert not any(self.window.shows_error(other) for other in others)

    def check_that_it_opens_the_picker(self, combination: str):
        self.press(combination)
        self.desktop.brimwick.wait_for_picker()
        self.desktop.keyboard.tap("Escape")
        self.desktop.brimwick.wait_until_hidden()
        self.filing.wait_until_files_are_back_in_front()

    def check_that_it_is_no_hot_key(self, combination: str):
        self.press(combination)
        assert holds_for(lambda: self.desktop.brimwick.picker() is None, 1)


@contextmanager
def grabbed_by_another_program(desktop, key: str, modifiers: int):
    """While it lasts, another program has the combination."""
    other = Display(desktop.display.get_display_name())
    code = desktop.keyboard.code(key)
    try:
        other.screen().root.grab_key(code, modifiers, True, X.GrabModeAsync, X.GrabModeAsync)
        other.sync()
        yield
    finally:
        other.close()
