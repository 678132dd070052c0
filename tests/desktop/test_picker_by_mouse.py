"""The picker's controls, each by a click."""

import pytest

from filing import contents
from harness import wait_until
from harness.appearance import MapCounter
from harness.brimwick import WINDOW_CLASS
from harness.mouse import RIGHT
from harness.picker import COPY, MOVE, OPEN
from harness.waiting import holds_for

ROW = 2


@pytest.mark.short
def test_a_click_chooses_the_row_and_the_button_confirms(filing):
    filing.show_selected({"a.txt": b"a"})
    places = _search(filing, MOVE)
    _click(filing, places.result(ROW))
    _click(filing, places.confirm_button())
    filing.desktop.brimwick.wait_until_hidden()
    filing.wait_for_action("Moved", ["a.txt"], filing.folders[ROW])
    filing.wait_until_files_are_back_in_front()


def test_the_button_copies_in_copy_mode(filing):
    filing.show_selected({"a.txt": b"a"})
    places = _search(filing, COPY)
    _click(filing, places.result(ROW))
    _click(filing, places.confirm_button())
    filing.wait_for_action("Copied", ["a.txt"], filing.folders[ROW])
    assert contents(filing.inbox) == {"a.txt": b"a"}


def test_the_button_opens_in_open_mode_and_the_picker_stays(filing):
    filing.show_unselected({})
    places = _search(filing, OPEN)
    _click(filing, places.result(ROW))
    _click(filing, places.confirm_button())
    filing.desktop.windows.wait_for("pcmanfm-qt", filing.ROWS[ROW])
    assert holds_for(filing.desktop.brimwick.picker, 0.5)


@pytest.mark.parametrize("mode", [MOVE, COPY, OPEN])
def test_a_double_click_shows_the_folder_and_the_picker_again(filing, mode):
    filing.show_selected({"a.txt": b"a"})
    places = _search(filing, mode)
    maps = _map_counter(filing)
    filing.desktop.mouse.double_click(*places.result(ROW))
    _expect_folder_shown_and_picker_ready(filing, mode, maps)


def test_the_show_button_shows_the_folder_and_the_picker_again(filing):
    filing.show_selected({"a.txt": b"a"})
    places = _search(filing, MOVE)
    maps = _map_counter(filing)
    _click(filing, places.result(ROW))
    _click(filing, places.show_button())
    _expect_folder_shown_and_picker_ready(filing, MOVE, maps)


def test_a_right_click_selects_its_row_and_the_menu_moves_there(filing):
    filing.show_selected({"a.txt": b"a"})
    places = _search(filing, MOVE)
    _choose_from_menu(filing, places.result(ROW), 0, of=2)
    filing.wait_for_action("Moved", ["a.txt"], filing.folders[ROW])
    filing.desktop.brimwick.wait_until_hidden()


def test_the_menu_shows_the_folder_and_the_picker_again(filing):
    filing.show_selected({"a.txt": b"a"})
    places = _search(filing, MOVE)
    maps = _map_counter(filing)
    _choose_from_menu(filing, places.result(ROW), 1, of=2)
    _expect_folder_shown_and_picker_ready(filing, MOVE, maps)


def test_in_open_mode_the_menu_only_shows(filing):
    filing.show_unselected({})
    places = _search(filing, OPEN)
    maps = _map_counter(filing)
    _choose_from_menu(filing, places.result(ROW), 0, of=1)
    _expect_folder_shown_and_picker_ready(filing, OPEN, maps)


def test_the_context_menu_leaves_the_selected_files_in_sight(filing):
    filing.show_selected({"a.txt": b"a"})
    places = _search(filing, MOVE)
    area = places.selected_files_area()
    before = filing.desktop.windows.pixels(area)
    assert len(set(before[i : i + 4] for i in range(0, len(before), 4))) > 2
    _open_menu(filing, places.result(ROW))
    assert holds_for(lambda: filing.desktop.windows.pixels(area) == before, 0.5)
    filing.desktop.keyboard.tap("Escape")
    wait_until(lambda: not _menus(filing), "the menu is closed")
    assert filing.desktop.brimwick.picker()
    assert filing.desktop.windows.pixels(area) == before


@pytest.mark.parametrize("way", ["double click", "menu"])
def test_a_selected_file_is_shown_where_it_lies(filing, way):
    (file,) = filing.show_selected({"a.txt": b"a"})
    places = _search(filing, MOVE)
    before = len(filing.desktop.file_manager.windows())
    if way == "menu":
        _choose_from_menu(filing, places.selected_file(0), 0, of=1)
    else:
        filing.desktop.mouse.double_click(*places.selected_file(0))
    wait_until(
        lambda: [w.title for w in filing.desktop.file_manager.windows()] == ["inbox"] * (before + 1),
        lambda: f"the file's folder is shown; windows: {filing.desktop.file_manager.windows()}",
    )
    assert file.exists()


def test_the_close_button_hides_the_picker_and_gives_the_focus_back(filing):
    filing.show_selected({"a.txt": b"a"})
    places = _search(filing, MOVE)
    _click(filing, places.close_button())
    filing.desktop.brimwick.wait_until_hidden()
    filing.wait_until_files_are_back_in_front()
    assert contents(filing.inbox) == {"a.txt": b"a"}


def test_the_title_bar_closes_and_nothing_pops_up_later(filing):
    filing.show_selected({"a.txt": b"a"})
    _search(filing, MOVE)
    frame = filing.desktop.brimwick.picker().frame
    _click(filing, (frame.x + frame.width - 12, frame.y + 10))
    filing.desktop.brimwick.wait_until_hidden()
    filing.wait_until_files_are_back_in_front()
    # A change of an indexed folder makes a new index, which searches again where a picker shows.
    filing.desktop.make_folder("Cabinet/resume new")
    assert holds_for(lambda: filing.desktop.brimwick.picker() is None, 1)
    filing.invoke(MOVE)
    filing.choose("")
    assert filing.desktop.brimwick.picker()


def _search(filing, mode):
    filing.invoke(mode)
    filing.choose("resume")
    return filing.places(mode)


def _map_counter(filing):
    return MapCounter(filing.desktop.display, filing.desktop.brimwick.picker())


def _click(filing, point):
    filing.desktop.mouse.click(*point)


def _menus(filing):
    return filing.desktop.windows.popups(WINDOW_CLASS)


def _open_menu(filing, point):
    filing.desktop.mouse.click(*point, RIGHT)
    return wait_until(lambda: _menus(filing), "the context menu is open")[-1].client


def _choose_from_menu(filing, point, index, of):
    menu = _open_menu(filing, point)
    _click(filing, (menu.x + menu.width // 2, menu.y + menu.height * (2 * index + 1) // (2 * of)))


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
