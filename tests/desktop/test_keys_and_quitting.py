"""Held keys, repeating keys, and the end of the program."""

import signal

import pytest

from harness import wait_until
from harness.appearance import MapCounter
from harness.picker import COPY, HOT_KEYS, MOVE, OPEN
from harness.waiting import holds_for


def test_return_held_down_does_not_repeat_into_the_file_manager(filing):
    (papers,) = filing.desktop.make_folder("inbox/papers")
    filing.window = filing.desktop.file_manager.open(filing.inbox)
    filing.desktop.file_manager.select_all([papers])
    filing.invoke(COPY)
    filing.choose("taxes")
    with filing.desktop.keyboard.holding("Return"):
        filing.desktop.brimwick.wait_until_hidden()
        assert holds_for(lambda: filing.window.title == "inbox", 1.5)
    filing.wait_for_action("Copied", ["papers"], filing.cabinet / "Taxes")
    filing.wait_until_files_are_back_in_front()
    assert holds_for(lambda: _titles(filing) == ["inbox"], 0.5)
    # A Return of its own does open the folder that is still selected there.
    filing.desktop.keyboard.tap("Return")
    wait_until(lambda: _titles(filing) == ["papers"], lambda: f"the folder opens; windows: {_titles(filing)}")


@pytest.mark.parametrize("mode", [MOVE, OPEN])
def test_a_held_hot_key_fires_once_and_on_release(filing, mode):
    filing.show_selected({"a.txt": b"a"})
    picker = filing.invoke(mode)
    filing.desktop.keyboard.tap("Escape")
    filing.desktop.brimwick.wait_until_hidden()
    filing.wait_until_files_are_back_in_front()
    maps = MapCounter(filing.desktop.display, picker)

    *modifiers, key = HOT_KEYS[mode].split("+")
    with filing.desktop.keyboard.holding(*modifiers):
        with filing.desktop.keyboard.holding(key):
            assert holds_for(lambda: filing.desktop.brimwick.picker() is None, 1.5)
        filing.desktop.brimwick.wait_for_picker()
    assert holds_for(lambda: filing.desktop.brimwick.picker() == picker, 1)
    assert maps.count() == 1


def test_a_hot_key_works_with_caps_lock_and_num_lock_on(filing):
    filing.show_unselected({})
    for lock in ("Caps_Lock", "Num_Lock"):
        filing.desktop.keyboard.tap(lock)
        filing.invoke(OPEN)
        filing.desktop.keyboard.tap("Escape")
        filing.desktop.brimwick.wait_until_hidden()
        filing.wait_until_files_are_back_in_front()


@pytest.mark.short
@pytest.mark.parametrize("showing", [False, True], ids=["hidden", "showing the picker"])
def test_a_polite_end_is_quick_and_clean(filing, showing):
    if showing:
        filing.invoke(OPEN)
    process = filing.desktop.brimwick.process
    process.send(signal.SIGTERM)
    assert process.wait(3) == 0


def _titles(filing):
    return [window.title for window in filing.desktop.file_manager.windows()]
