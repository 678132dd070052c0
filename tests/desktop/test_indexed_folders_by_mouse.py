"""The list of indexed folders, changed with a real mouse; the controls are found as a screen reader finds them."""

import pytest

from filing import Filing
from folder_panel import add_folder_in_panel, listed_folders
from harness import wait_until
from harness.accessibility import CHECKED, ENABLED, ENVIRONMENT, Accessibility
from harness.brimwick import WINDOW_CLASS
from harness.mouse import RIGHT
from harness.preferences_window import TITLE
from harness.waiting import holds_for
from window_managers import under_every_window_manager

ADD = "Add a folder"
REMOVE = "Remove the selected folder from the list"
SHOW = "Show the selected folder in the file manager"
ADD_TRASH = "Add the Trash to the list"
REBUILD = "Rebuild the index when this window closes"
REBUILT = "Index rebuilding complete."


class ByMouse:
    """The preferences window is in front, with two folders in its list."""

    def __init__(self, desktop):
        self.desktop = desktop
        self._accessibility = Accessibility(desktop)
        self.filing = Filing(desktop)
        desktop.brimwick.start(environment=ENVIRONMENT)
        self.show()
        self.before = self.listed()

    def show(self):
        assert self.desktop.brimwick.run().returncode == 0
        self.desktop.brimwick.wait_for_preferences_window()

    def control(self, name):
        return self._accessibility.wait_for(TITLE, str(name))

    def click(self, name):
        self.desktop.mouse.click(*self.control(name).middle)

    def select(self, folder):
        self.click(folder)
        wait_until(lambda: ENABLED in self.control(REMOVE).states, "a folder is selected")

    def remove_by_menu_at(self, x, y):
        """Opens the menu there, and takes its second item."""
        self.desktop.mouse.click(x, y, RIGHT)
        wait_until(lambda: self.desktop.windows.popups(WINDOW_CLASS), "the menu is open")
        self.desktop.keyboard.wait_until_taken()
        for key in ("Down", "Down", "Return"):
            self.desktop.keyboard.tap(key)

    def close(self):
        self.click("Close")
        self.desktop.brimwick.wait_until_preferences_are_hidden()

    def listed(self) -> list:
        return listed_folders(self.desktop)

    def wait_until_listed(self, folders):
        wait_until(lambda: self.listed() == folders, lambda: f"{folders} are saved, not {self.listed()}")
        assert self.desktop.preferences.read_by_another_program() == self.desktop.preferences.read()

    def check_that_the_rebuild_is_forced(self):
        states = self.control(REBUILD).states
        assert CHECKED in states and ENABLED not in states

    def told(self) -> list:
        return self.desktop.notifications.texts()


@pytest.fixture
def by_mouse(desktop):
    return ByMouse(desktop)


@under_every_window_manager
def test_a_folder_is_added_and_one_is_removed(by_mouse, window_manager):
    (letters,) = by_mouse.desktop.make_folder("Letters")
    by_mouse.click(ADD)
    add_folder_in_panel(by_mouse.desktop, letters)
    by_mouse.check_that_the_rebuild_is_forced()
    by_mouse.select(by_mouse.filing.attic)
    by_mouse.click(REMOVE)
    by_mouse.wait_until_listed(sorted([str(by_mouse.filing.cabinet), str(letters)]))
    by_mouse.close()
    by_mouse.desktop.notifications.wait_for(REBUILT)


@under_every_window_manager
def test_a_subfolder_is_refused_with_an_alert(by_mouse, window_manager):
    desktop = by_mouse.desktop
    by_mouse.click(ADD)
    panel = desktop.windows.wait_for(WINDOW_CLASS, "Add an Indexed Folder")
    desktop.windows.wait_until_active(panel)
    desktop.keyboard.type(str(by_mouse.filing.cabinet / "Taxes"))
    desktop.keyboard.tap("Return")
    alert = desktop.windows.wait_for(WINDOW_CLASS, "Brimwick")
    desktop.windows.wait_until_active(alert)
    desktop.keyboard.tap("Return")
    wait_until(lambda: not alert.is_viewable(), "the alert is gone")
    desktop.brimwick.wait_for_preferences_window()
    assert by_mouse.listed() == by_mouse.before
    assert CHECKED not in by_mouse.control(REBUILD).states


def test_the_trash_is_added_once(by_mouse):
    trash = str(by_mouse.desktop.home / ".Trash")
    by_mouse.click(ADD_TRASH)
    by_mouse.wait_until_listed([*by_mouse.before, trash])
    by_mouse.check_that_the_rebuild_is_forced()
    assert ENABLED not in by_mouse.control(ADD_TRASH).states
    by_mouse.click(ADD_TRASH)
    assert holds_for(lambda: by_mouse.listed() == [*by_mouse.before, trash], 0.3)


def test_the_selected_folder_is_shown_by_the_button_and_by_a_double_click(by_mouse):
    windows = by_mouse.desktop.windows
    by_mouse.select(by_mouse.filing.cabinet)
    by_mouse.click(SHOW)
    windows.wait_for("pcmanfm-qt", "Cabinet", timeout=20)
    by_mouse.show()
    place = by_mouse.control(by_mouse.filing.attic).middle
    by_mouse.desktop.mouse.click(*place)
    by_mouse.desktop.mouse.click(*place)
    windows.wait_for("pcmanfm-qt", "Attic", timeout=20)


def test_the_context_menu_acts_on_the_row_below_the_pointer(by_mouse):
    by_mouse.select(by_mouse.filing.cabinet)
    by_mouse.remove_by_menu_at(*by_mouse.control(by_mouse.filing.attic).middle)
    by_mouse.wait_until_listed([str(by_mouse.filing.cabinet)])


def test_a_right_click_below_the_last_row_keeps_the_selection(by_mouse):
    by_mouse.select(by_mouse.filing.cabinet)
    place = by_mouse.control("Indexed folders").place
    by_mouse.remove_by_menu_at(place.x + 20, place.y + place.height - 10)
    by_mouse.wait_until_listed([str(by_mouse.filing.attic)])


def test_the_box_has_the_index_rebuilt_unless_it_is_unticked_again(by_mouse):
    for _ in range(2):
        by_mouse.click(REBUILD)
    wait_until(lambda: CHECKED not in by_mouse.control(REBUILD).states, "the box is not ticked")
    by_mouse.close()
    assert holds_for(lambda: REBUILT not in by_mouse.told(), 0.5)
    by_mouse.show()
    by_mouse.click(REBUILD)
    wait_until(lambda: CHECKED in by_mouse.control(REBUILD).states, "the box is ticked")
    by_mouse.close()
    by_mouse.desktop.notifications.wait_for(REBUILT)
