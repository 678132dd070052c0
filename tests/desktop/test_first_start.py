"""A start without a folder to index, and a start anew from the preferences window."""

from pathlib import Path

from folder_panel import add_folder_in_panel
from harness import wait_until
from harness.preferences_window import RESTART
from harness.waiting import holds_for

REBUILT = "Index rebuilding complete."


def start_and_add(desktop, folder, *arguments):
    """Returns the preferences window, which the program shows by itself."""
    desktop.brimwick.start(*arguments)
    window = desktop.brimwick.wait_for_preferences_window()
    desktop.keyboard.tap("equal")
    add_folder_in_panel(desktop, folder)
    return window


def find(desktop, name):
    """Opens a folder by the hot key for that."""
    desktop.keyboard.chord("ctrl+super+o")
    desktop.brimwick.wait_for_picker()
    desktop.keyboard.type(name)
    desktop.keyboard.tap("Return")
    titles = lambda: [window.title for window in desktop.file_manager.windows()]
    wait_until(lambda: titles() == [name], lambda: f"{name} is opened, not {titles()}")


def test_the_first_start_asks_for_a_folder_and_finds_what_lies_in_it(desktop):
    (letters,) = desktop.make_folder("Documents/letters")
    start_and_add(desktop, letters.parent)
    desktop.keyboard.tap("Escape")
    desktop.notifications.wait_for(REBUILT)
    find(desktop, "letters")


def test_a_start_with_folders_shows_no_window(filing):
    assert holds_for(lambda: filing.desktop.brimwick.preferences_window() is None, 0.5)


def test_restarted_by_its_button_it_watches_the_new_folder(desktop):
    (documents,) = desktop.make_folder("Documents")
    window = start_and_add(desktop, documents, "-style", "fusion")
    pid = window.window.pid
    given = Path(f"/proc/{pid}/cmdline").read_bytes()
    starts = desktop.brimwick.times_ready()
    desktop.mouse.click(*window.at(RESTART))
    wait_until(lambda: desktop.brimwick.times_ready() > starts, "it has started again")
    assert Path(f"/proc/{pid}/cmdline").read_bytes() == given, "it is the same process, with what it was given"
    assert holds_for(lambda: desktop.brimwick.preferences_window() is None, 0.5)
    desktop.make_folder("Documents/later")
    desktop.notifications.wait_for(REBUILT)
    find(desktop, "later")
