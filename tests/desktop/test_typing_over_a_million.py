"""Typing at full speed over very many folders drops no key, and ends with what was typed last.

BRIMWICK_TEST_FOLDERS says how many; 100,000 unless it is set. For the whole million there must be room for about 5 GB:

    BRIMWICK_TEST_FOLDERS=1000000 tests/desktop/run -k typing
"""

import os
import subprocess
import tempfile
import time
from pathlib import Path

import pytest

from harness import wait_until
from harness.brimwick import REPOSITORY
from harness.picker import HOT_KEYS, MOVE, PickerPlaces
from harness.waiting import holds_for

FOLDERS = int(os.environ.get("BRIMWICK_TEST_FOLDERS", "100000"))
KEYS_A_SECOND = 30
# One key less, or two in another order, and nothing is found or another text stands there.
NAME = "every quick brown fox jumps over the lazy dog 0123456789"
# The first letter of NAME stays all the time, so that a BackSpace always has something to take away: were a key
# dropped, it would be a letter too many or too few in the end. That letter is in the names of a large part of all
# folders, and so are, less often, these two.
HEAVY = ["r", "BackSpace", "s", "BackSpace", "a", "r", "BackSpace", "BackSpace"] * 10


@pytest.fixture
def tree():
    """The folders; among them a few whose name begins with NAME."""
    with tempfile.TemporaryDirectory(prefix="brimwick-typing-") as folder:
        root = Path(folder) / "tree"
        Path(folder).chmod(0o755)
        subprocess.run([REPOSITORY / "bench/make-tree", root, "--folders", str(FOLDERS)], check=True, capture_output=True)
        # The first of them is found until the very last key.
        for name in (NAME[:-1], f"{NAME} a", f"{NAME} b", f"{NAME} c"):
            (root / name).mkdir()
        yield root
        # Much faster than what Python does at the end of the block.
        subprocess.run(["rm", "-rf", root], check=True)


@pytest.fixture
def inbox(desktop, tree):
    """A folder with one selected file, shown by the file manager; Brimwick has indexed the tree."""
    (inbox,) = desktop.make_folder("inbox")
    files = desktop.make_files(inbox, {"a.txt": b"a"})
    os.chown(tree / f"{NAME} a", desktop.account.uid, desktop.account.gid)
    desktop.preferences.write([tree])
    desktop.brimwick.start(timeout=600)
    window = desktop.file_manager.open(inbox)
    desktop.file_manager.select_all(files)
    desktop.windows.wait_until_active(window)
    yield inbox
    # Nobody is to follow how the tree goes.
    desktop.brimwick.end()


# Names in scripts that no installed font knows.
@pytest.mark.expected_stderr("OpenType support missing")
def test_typing_at_full_speed_drops_no_key_and_shows_the_final_result(desktop, tree, inbox, capsys):
    _invoke(desktop)
    expected = _shown_after_typing_slowly(desktop)
    desktop.keyboard.tap("Escape")
    desktop.brimwick.wait_until_hidden()

    picker = _invoke(desktop)
    area = PickerPlaces(picker, MOVE).results_area()
    # The text of last time is there, selected.
    desktop.keyboard.tap("BackSpace")
    wait_until(lambda: desktop.windows.pixels(area) != expected, "the list of last time is gone")
    keys = [NAME[0], *HEAVY, *_keys(NAME[1:])]
    seconds = _type_at_full_speed(desktop, keys)
    begin = time.monotonic()
    wait_until(lambda: desktop.windows.pixels(area) == expected, "the final result is shown", 60)
    delay = time.monotonic() - begin
    assert holds_for(lambda: desktop.windows.pixels(area) == expected, 0.5)
    assert _text_of_search_field(desktop) == NAME

    desktop.keyboard.tap("Return")
    desktop.brimwick.wait_until_hidden()
    target = tree / f"{NAME} a"
    desktop.notifications.wait_for(f"Moved file a.txt to folder {target}")
    assert (target / "a.txt").read_bytes() == b"a"
    assert list(inbox.iterdir()) == []
    with capsys.disabled():
        print(
            f"\n{FOLDERS} folders: {len(keys)} keys, {len(keys) / seconds:.1f} a second, none dropped;"
            f" the final result was seen {1000 * delay:.0f} ms after the last key"
        )


def _invoke(desktop):
    desktop.keyboard.chord(HOT_KEYS[MOVE])
    return desktop.brimwick.wait_for_picker()


def _keys(text: str) -> list:
    return ["space" if character == " " else character for character in text]


def _type_at_full_speed(desktop, keys) -> float:
    """One key every 33 ms, however the program keeps up; yields how long it took."""
    begin = time.monotonic()
    for number, key in enumerate(keys):
        time.sleep(max(0.0, begin + number / KEYS_A_SECOND - time.monotonic()))
        desktop.keyboard.tap(key)
    return time.monotonic() - begin


def _shown_after_typing_slowly(desktop) -> bytes:
    """What the list shows for NAME when every key had all the time that it wanted."""
    area = PickerPlaces(desktop.brimwick.picker(), MOVE).results_area()
    for key in _keys(NAME):
        desktop.keyboard.tap(key)
        _wait_until_it_stands_still(desktop, area)
    return desktop.windows.pixels(area)


def _text_of_search_field(desktop) -> str:
    desktop.clipboard.empty()
    desktop.keyboard.chord("ctrl+a")
    desktop.keyboard.chord("ctrl+c")
    return wait_until(desktop.clipboard.read, "the text is copied").decode()


def _wait_until_it_stands_still(desktop, area):
    def stands_still():
        before = desktop.windows.pixels(area)
        return holds_for(lambda: desktop.windows.pixels(area) == before, 0.15)

    wait_until(stands_still, "the list stands still", 30)
