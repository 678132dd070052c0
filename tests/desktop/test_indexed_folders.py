"""The list of indexed folders, changed in the preferences window with real keys and a real mouse."""

import pytest

from filing import contents
from harness import wait_until
from harness.brimwick import WINDOW_CLASS
from harness.picker import MOVE
from recording import Recording

PANEL = "Add an Indexed Folder"


@pytest.fixture
def recording(filing):
    return Recording(filing)


@pytest.fixture
def emma(filing):
    return filing.desktop.make_folder("Letters/Aunt Emma")[0]


def listed(recording) -> list:
    return recording.desktop.preferences.read()["IndexedFolders"]


def add(recording, folder):
    """Chooses a folder in the panel that is open."""
    desktop = recording.desktop
    panel = desktop.windows.wait_for(WINDOW_CLASS, PANEL)
    desktop.windows.wait_until_active(panel)
    desktop.keyboard.type(str(folder))
    desktop.keyboard.tap("Return")
    wait_until(lambda: str(folder) in listed(recording), lambda: f"{folder} is saved; saved are {listed(recording)}")
    wait_until(lambda: not panel.is_viewable(), "the panel is gone")
    desktop.windows.wait_until_active(recording.window.window)


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
    add(recording, emma.parent)
    recording.close()
    move_there(recording, "emma", emma)


def test_a_folder_is_taken_off_by_keys_and_stays_where_it_is(recording):
    before = listed(recording)
    for _ in range(3):
        recording.press("Tab")
    recording.press("Down")
    recording.press("minus")
    wait_until(lambda: listed(recording) == before[1:], lambda: f"the first is off the list; saved: {listed(recording)}")
    assert recording.filing.cabinet.is_dir()
