"""The list of indexed folders, changed in the preferences window with real keys and a real mouse."""

import pytest

from filing import contents
from harness import wait_until
from harness.picker import MOVE
from harness.preferences_window import INDEXED_FOLDERS
from folder_panel import add_folder_in_panel, listed_folders
from recording import Recording

@pytest.fixture
def recording(filing):
    return Recording(filing)


@pytest.fixture
def emma(filing):
    return filing.desktop.make_folder("Letters/Aunt Emma")[0]


def listed(recording) -> list:
    return listed_folders(recording.desktop)


def move_there(recording, name, folder):
    told = recording.desktop.notifications
    wait_until(lambda: "Index rebuilding complete." in told.texts(), lambda: f"it is indexed; told: {told.texts()}")
    filing = recording.filing
    filing.invoke(MOVE)
    filing.choose(name)
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], folder)
    assert contents(folder) == {"a.txt": b"a"}


@pytest.mark.short
def test_a_folder_is_added_by_keys_and_found_once_the_window_is_closed(recording, emma):
    for _ in range(3):
        recording.press("Tab")
    recording.press("equal")
    add_folder_in_panel(recording.desktop, emma.parent)
    recording.close()
    move_there(recording, "emma", emma)


def test_a_folder_is_added_by_dragging_it_from_the_file_manager(desktop):
    documents, letters = desktop.make_folder("Documents", "Box/Letters")
    desktop.preferences.write([documents])
    desktop.brimwick.start()
    box = desktop.file_manager.open(letters.parent)
    place = box.client
    box.move(40, 40)
    wait_until(lambda: box.client != place, "the file manager is aside")
    desktop.keyboard.chord("ctrl+super+o")
    desktop.brimwick.wait_for_picker()
    desktop.keyboard.chord("ctrl+comma")
    window = desktop.brimwick.wait_for_preferences_window()
    first_row = box.client.x + 180, box.client.y + 134
    desktop.mouse.drag(first_row, window.at(INDEXED_FOLDERS))
    saved = lambda: desktop.preferences.read()["IndexedFolders"]
    wait_until(lambda: str(letters) in saved(), lambda: f"{letters} is saved; saved are {saved()}")
    assert letters.is_dir()


def test_a_folder_is_taken_off_by_keys_and_stays_where_it_is(recording):
    before = listed(recording)
    for _ in range(3):
        recording.press("Tab")
    recording.press("Down")
    recording.press("minus")
    wait_until(lambda: listed(recording) == before[1:], lambda: f"the first is off the list; saved: {listed(recording)}")
    assert recording.filing.cabinet.is_dir()
