"""The picker's window and its selected files, by mouse."""

import pytest

from filing import contents
from harness import wait_until
from harness.picker import MOVE
from harness.waiting import holds_for
from pointing import ROW, act_and_see, choose_from_menu, click, menus, open_menu, search


def test_the_context_menu_leaves_the_selected_files_in_sight(filing):
    filing.show_selected({"a.txt": b"a"})
    places = search(filing, MOVE)
    area = places.selected_files_area()
    before = filing.desktop.windows.pixels(area)
    assert len(set(before[i : i + 4] for i in range(0, len(before), 4))) > 2
    open_menu(filing, places.result(ROW))
    assert holds_for(lambda: filing.desktop.windows.pixels(area) == before, 0.5)
    filing.desktop.keyboard.tap("Escape")
    wait_until(lambda: not menus(filing), "the menu is closed")
    assert filing.desktop.brimwick.picker()
    assert filing.desktop.windows.pixels(area) == before


@pytest.mark.parametrize("way", ["double click", "menu"])
def test_a_selected_file_is_shown_where_it_lies(filing, way):
    (file,) = filing.show_selected({"a.txt": b"a"})
    places = search(filing, MOVE)
    before = len(filing.desktop.file_manager.windows())
    if way == "menu":
        choose_from_menu(filing, places.selected_file(0), 0, of=1)
    else:
        act_and_see(filing, places.selected_file(0), lambda: click(filing, places.selected_file(0)))
        click(filing, places.selected_file(0))
    wait_until(
        lambda: [w.title for w in filing.desktop.file_manager.windows()] == ["inbox"] * (before + 1),
        lambda: f"the file's folder is shown; windows: {filing.desktop.file_manager.windows()}",
    )
    assert file.exists()


def test_the_close_button_hides_the_picker_and_gives_the_focus_back(filing):
    filing.show_selected({"a.txt": b"a"})
    places = search(filing, MOVE)
    click(filing, places.close_button())
    filing.desktop.brimwick.wait_until_hidden()
    filing.wait_until_files_are_back_in_front()
    assert contents(filing.inbox) == {"a.txt": b"a"}


def test_the_title_bar_closes_and_nothing_pops_up_later(filing):
    filing.show_selected({"a.txt": b"a"})
    search(filing, MOVE)
    frame = filing.desktop.brimwick.picker().frame
    click(filing, (frame.x + frame.width - 12, frame.y + 10))
    filing.desktop.brimwick.wait_until_hidden()
    filing.wait_until_files_are_back_in_front()
    assert holds_for(lambda: filing.desktop.brimwick.picker() is None, 1)
    filing.invoke(MOVE)
    filing.choose("")
    assert filing.desktop.brimwick.picker()
