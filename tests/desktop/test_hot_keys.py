"""The three hot keys under the window managers that people use, pressed as people press keys."""

from contextlib import contextmanager

from Xlib import X

from harness.appearance import MapCounter
from harness.picker import COPY, HOT_KEYS, MOVE, OPEN
from harness.waiting import holds_for
from window_managers import under_every_window_manager


LOCK_MASKS = {"Caps_Lock": X.LockMask, "Num_Lock": X.Mod2Mask}


@contextmanager
def locked(desktop, *locks):
    """While it lasts, these locks are on and the others off."""
    try:
        for lock in locks:
            desktop.keyboard.tap(lock)
        on = desktop.display.screen().root.query_pointer().mask
        assert [lock for lock, mask in LOCK_MASKS.items() if on & mask] == list(locks)
        yield
    finally:
        for lock in locks:
            desktop.keyboard.tap(lock)


def held(filing, combination):
    with filing.desktop.keyboard.holding(*combination.split("+")):
        # Longer than it takes until keys repeat.
        assert holds_for(lambda: filing.desktop.brimwick.picker() is None, 0.7)


def modifiers_first(filing, combination):
    """Lets go of the modifiers before the key."""
    keys = combination.split("+")
    for key in keys:
        filing.desktop.keyboard.press(key)
    for key in keys:
        filing.desktop.keyboard.release(key)


def plainly(filing, combination):
    filing.desktop.keyboard.chord(combination)


WAYS = {
    "plainly": (plainly, ()),
    "with caps lock": (plainly, ("Caps_Lock",)),
    "with num lock": (plainly, ("Num_Lock",)),
    "with both locks": (plainly, ("Caps_Lock", "Num_Lock")),
    "held": (held, ()),
    "with the modifiers released first": (modifiers_first, ()),
}


@under_every_window_manager
def test_each_hot_key_fires_once_a_press(filing, window_manager):
    filing.show_selected({"a.txt": b"a"})
    picker = filing.invoke(OPEN)
    _close(filing)
    maps = MapCounter(filing.desktop.display, picker)
    for way, (press, locks) in WAYS.items():
        for mode in (MOVE, COPY, OPEN):
            with locked(filing.desktop, *locks):
                press(filing, HOT_KEYS[mode])
                filing.desktop.brimwick.wait_for_picker()
                assert holds_for(lambda: filing.desktop.brimwick.picker() == picker, 0.2)
            assert maps.count() == 1, f"{mode} pressed {way} under {window_manager}"
            _close(filing)
            maps = MapCounter(filing.desktop.display, picker)


def _close(filing):
    filing.desktop.keyboard.tap("Escape")
    filing.desktop.brimwick.wait_until_hidden()
    filing.wait_until_files_are_back_in_front()
