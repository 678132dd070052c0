"""Where there is nothing to do, nothing is done, and nobody else gets a key."""

import pytest

from harness import wait_until
from harness.picker import COPY, MOVE, OPEN
from harness.waiting import holds_for

NOTHING_SELECTED = "No files selected in Finder. Please select files before invoking the Move command."


@pytest.mark.short
@pytest.mark.parametrize("mode", [MOVE, COPY])
def test_nothing_selected_is_said_and_the_picker_stays_hidden(filing, mode):
    filing.show_unselected({"a.txt": b"a"})
    filing.press_hot_key(mode)
    notification = filing.desktop.notifications.wait_for(NOTHING_SELECTED)
    assert notification.is_well_formed()
    assert filing.action_texts() == [NOTHING_SELECTED]
    assert holds_for(lambda: filing.desktop.brimwick.picker() is None, 0.5)


@pytest.mark.short
def test_a_terminal_in_front_gets_no_key_and_no_picker_comes(filing):
    terminal = filing.desktop.terminal
    window = terminal.open()
    for mode in (MOVE, COPY):
        filing.press_hot_key(mode)
        assert holds_for(lambda: filing.desktop.brimwick.picker() is None, 1)
    assert filing.desktop.windows.active() == window
    counted = terminal.count()
    wait_until(lambda: terminal.count() > counted, "the terminal still counts")
    assert terminal.received() == b""
    assert filing.action_texts() == []
    # The hot keys were heard all the same: the one that asks for no file manager shows the picker.
    filing.invoke(OPEN)
    assert terminal.received() == b""


def test_an_empty_desktop_counts_as_nothing_selected(filing):
    assert filing.desktop.file_manager.windows() == []
    filing.press_hot_key(MOVE)
    filing.desktop.notifications.wait_for(NOTHING_SELECTED)
    assert filing.desktop.brimwick.picker() is None


def test_no_key_is_left_held_down(filing):
    filing.show_selected({"a.txt": b"a"})
    filing.invoke(MOVE)
    assert filing.desktop.keyboard.held() == []
    filing.desktop.keyboard.tap("Escape")
    filing.wait_until_files_are_back_in_front()
    assert filing.desktop.keyboard.held() == []
