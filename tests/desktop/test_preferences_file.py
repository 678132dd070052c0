"""The preferences file in whatever state it is found."""

import plistlib
from datetime import datetime

import pytest

from filing import Filing
from folder_panel import add_folder_in_panel
from harness.picker import MOVE, OPEN
from recording import Recording

CORRUPT = {
    "empty": b"",
    "text": b"not a list",
    "cut off": b"<plist><dict><key>Hot",
    "zeros": b"\0" * 4096,
    "wrong shape": plistlib.dumps(["no", "dictionary"]),
    "binary": plistlib.dumps({"HotKeyCode": "46"}, fmt=plistlib.FMT_BINARY),
}


@pytest.mark.parametrize("content", CORRUPT.values(), ids=CORRUPT.keys())
def test_a_corrupt_file_is_kept_aside_and_the_defaults_hold(desktop, content):
    desktop.preferences.write_bytes(content)
    desktop.brimwick.start()
    kept = list(desktop.preferences.folder.glob("BrimwickPreferences.corrupt-*.plist"))
    # Of an empty file there is nothing to keep.
    assert [path.read_bytes() for path in kept] == ([content] if content else [])
    stored = desktop.preferences.read()
    assert (stored["HotKeyCode"], stored["WickWindowHeight"], stored["IndexedFolders"]) == ("46", "572", [])
    # Without a folder it asks for one.
    desktop.brimwick.wait_for_preferences_window()
    desktop.keyboard.tap("Escape")
    desktop.brimwick.wait_until_preferences_are_hidden()
    desktop.keyboard.chord("ctrl+super+o")
    desktop.brimwick.wait_for_picker()


def test_the_file_belongs_to_the_real_home_whatever_home_says(desktop):
    (elsewhere,) = desktop.make_folder("elsewhere")
    filing = Filing(desktop)
    desktop.brimwick.start(environment={"HOME": str(elsewhere)})
    filing.invoke(OPEN)
    filing.choose("resume")
    desktop.keyboard.tap("Escape")
    desktop.brimwick.wait_until_hidden()
    assert not (elsewhere / "Library").exists()
    assert desktop.preferences.read()["WickWindowHeight"] == "572"


def test_an_unwritable_folder_does_not_stop_the_job(desktop):
    filing = Filing(desktop)
    desktop.preferences.folder.chmod(0o500)
    desktop.brimwick.start()
    filing.show_selected({"a.txt": b"a"})
    filing.invoke(MOVE)
    filing.choose("taxes")
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], filing.cabinet / "Taxes")


def test_indexed_folders_that_are_gone_or_are_files_are_passed_over(desktop):
    filing = Filing(desktop)
    desktop.make_files(desktop.home, {"a file": b""})
    (locked,) = desktop.make_folder("locked")
    locked.chmod(0)
    desktop.preferences.write([desktop.home / "gone", desktop.home / "a file", locked, filing.cabinet])
    desktop.brimwick.start()
    filing.show_selected({"a.txt": b"a"})
    filing.invoke(MOVE)
    filing.choose("taxes")
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], filing.cabinet / "Taxes")


UNKNOWN = {
    "SomethingOfALaterVersion": {"text": "ÄÖ\u4e2d & <x>", "numbers": [1, -2, 0.5], "data": b"\0\xff", "date": datetime(2026, 1, 2)},
    "Another": True,
}


def test_keys_that_are_not_known_outlast_every_change_and_a_restart(desktop):
    filing = Filing(desktop)
    (later,) = desktop.make_folder("Later")
    desktop.preferences.write([filing.cabinet, filing.attic], **UNKNOWN)
    desktop.brimwick.start()
    recording = Recording(filing)
    recording.press("ctrl+alt+h")
    recording.wait_until_stored("4")
    for _ in range(3):
        recording.press("Tab")
    recording.press("equal")
    add_folder_in_panel(desktop, later)
    recording.close()
    assert desktop.brimwick.end() == 0
    desktop.brimwick.start()
    stored = desktop.preferences.read()
    assert {key: stored[key] for key in UNKNOWN} == UNKNOWN
    assert desktop.preferences.read_by_another_program() == stored
    # What was changed is there again, too.
    assert str(later) in stored["IndexedFolders"]
    filing.invoke(OPEN)
    desktop.keyboard.tap("Escape")
    desktop.brimwick.wait_until_hidden()
    recording.check_that_it_opens_the_picker("ctrl+alt+h")
