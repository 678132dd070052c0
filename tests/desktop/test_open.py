"""The Open hot key, part of a folder's name, Return: the file manager shows the folder."""

import pytest

from harness import wait_until
from harness.appearance import MapCounter
from harness.picker import MOVE, OPEN
from harness.waiting import holds_for


@pytest.mark.short
def test_open_shows_the_folder_in_the_file_manager_and_the_picker_stays(filing):
    filing.show_unselected({"a.txt": b"a"})
    filing.invoke(OPEN)
    filing.choose("resume", filing.ROWS.index("Résumés"))
    filing.desktop.keyboard.tap("Return")
    filing.desktop.windows.wait_for("pcmanfm-qt", "Résumés")
    assert holds_for(filing.desktop.brimwick.picker, 0.5)
    assert filing.action_texts() == []


def test_open_needs_no_file_manager_in_front(filing):
    filing.desktop.terminal.open()
    filing.invoke(OPEN)
    filing.choose("taxes")
    filing.desktop.keyboard.tap("Return")
    filing.desktop.windows.wait_for("pcmanfm-qt", "Taxes", timeout=20)


def test_invoking_another_mode_while_the_picker_shows_changes_the_mode(filing):
    filing.show_selected({"a.txt": b"a"})
    maps = MapCounter(filing.desktop.display, filing.invoke(OPEN))
    filing.press_hot_key(MOVE)
    wait_until(maps.count, "the picker is shown anew")
    filing.desktop.brimwick.wait_for_picker()
    filing.choose("taxes")
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], filing.cabinet / "Taxes")


def test_escape_closes_the_picker_and_gives_the_file_manager_the_focus(filing):
    filing.show_selected({"a.txt": b"a"})
    for mode in (OPEN, MOVE):
        filing.invoke(mode)
        filing.desktop.keyboard.tap("Escape")
        filing.desktop.brimwick.wait_until_hidden()
        filing.wait_until_files_are_back_in_front()
