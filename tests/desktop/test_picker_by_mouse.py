"""The picker's list, menu and buttons, each by a click."""

import pytest

from filing import contents
from harness import wait_until
from harness.picker import COPY, MOVE, OPEN
from harness.waiting import holds_for
from pointing import ROW, choose_from_menu, click, click_row, map_counter, search


@pytest.mark.short
def test_a_click_chooses_the_row_and_the_button_confirms(filing):
    filing.show_selected({"a.txt": b"a"})
    places = search(filing, MOVE)
    click_row(filing, places)
    click(filing, places.confirm_button())
    filing.desktop.brimwick.wait_until_hidden()
    filing.wait_for_action("Moved", ["a.txt"], filing.folders[ROW])
    filing.wait_until_files_are_back_in_front()


def test_the_button_copies_in_copy_mode(filing):
    filing.show_selected({"a.txt": b"a"})
    places = search(filing, COPY)
    click_row(filing, places)
    click(filing, places.confirm_button())
    filing.wait_for_action("Copied", ["a.txt"], filing.folders[ROW])
    assert contents(filing.inbox) == {"a.txt": b"a"}


def test_the_button_opens_in_open_mode_and_the_picker_stays(filing):
    filing.show_unselected({})
    places = search(filing, OPEN)
    click_row(filing, places)
    click(filing, places.confirm_button())
    filing.desktop.windows.wait_for("pcmanfm-qt", filing.ROWS[ROW])
    assert holds_for(filing.desktop.brimwick.picker, 0.5)


@pytest.mark.parametrize("mode", [MOVE, COPY, OPEN])
def test_a_double_click_shows_the_folder_and_the_picker_again(filing, mode):
    filing.show_selected({"a.txt": b"a"})
    places = search(filing, mode)
    maps = map_counter(filing)
    click_row(filing, places)
    click(filing, places.result(ROW))
    _expect_folder_shown_and_picker_ready(filing, mode, maps)


def test_the_show_button_shows_the_folder_and_the_picker_again(filing):
    filing.show_selected({"a.txt": b"a"})
    places = search(filing, MOVE)
    maps = map_counter(filing)
    click_row(filing, places)
    click(filing, places.show_button())
    _expect_folder_shown_and_picker_ready(filing, MOVE, maps)


def test_a_right_click_selects_its_row_and_the_menu_moves_there(filing):
    filing.show_selected({"a.txt": b"a"})
    places = search(filing, MOVE)
    choose_from_menu(filing, places.result(ROW), 0, of=2)
    filing.wait_for_action("Moved", ["a.txt"], filing.folders[ROW])
    filing.desktop.brimwick.wait_until_hidden()


def test_the_menu_shows_the_folder_and_the_picker_again(filing):
    filing.show_selected({"a.txt": b"a"})
    places = search(filing, MOVE)
    maps = map_counter(filing)
    choose_from_menu(filing, places.result(ROW), 1, of=2)
    _expect_folder_shown_and_picker_ready(filing, MOVE, maps)


def test_in_open_mode_the_menu_only_shows(filing):
    filing.show_unselected({})
    places = search(filing, OPEN)
    maps = map_counter(filing)
    choose_from_menu(filing, places.result(ROW), 0, of=1)
    _expect_folder_shown_and_picker_ready(filing, OPEN, maps)


def _expect_folder_shown_and_picker_ready(filing, mode, maps):
    """The folder is in the file manager, and the picker in front again with the same files and the same row."""
    windows = filing.desktop.windows
    windows.wait_for("pcmanfm-qt", filing.ROWS[ROW])
    wait_until(maps.count, "the picker is shown anew")
    picker = filing.desktop.brimwick.wait_for_picker()
    assert holds_for(lambda: windows.active() == picker, 0.5), f"the focus went to {windows.active()}"
    if mode == OPEN:
        return
    assert contents(filing.inbox) == {"a.txt": b"a"}
    filing.confirm()
    filing.wait_for_action("Moved" if mode == MOVE else "Copied", ["a.txt"], filing.folders[ROW])
