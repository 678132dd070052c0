"""Work on files that lasts: the user sees how far it is and can end it, and a crash in the midst of it does no harm."""

import os
import shutil
import signal
import tempfile
from pathlib import Path

import pytest

from filing import contents
from harness import wait_until
from harness.brimwick import WINDOW_CLASS
from harness.picker import COPY, MOVE

NAME = "film.bin"
# So much that no machine copies and flushes it in half a second.
SIZE = 2_000_000_000
BLOCK = b"film" * 250_000


@pytest.fixture
def elsewhere(filing):
    """A folder of the user's on another file system than the home."""
    home = filing.desktop.home.stat().st_dev
    places = [
        place
        for place in ("/dev/shm", "/var/tmp", "/run")
        if os.path.isdir(place) and os.stat(place).st_dev != home and shutil.disk_usage(place).free > 2 * SIZE
    ]
    if not places:
        pytest.skip("no second file system with room for a large file")
    folder = Path(tempfile.mkdtemp(prefix="brimwick-elsewhere-", dir=places[0]))
    filing.desktop.account.give(folder)
    yield folder
    shutil.rmtree(folder)


@pytest.fixture
def film(filing, elsewhere):
    """A large file, selected in the file manager."""
    path = elsewhere / NAME
    with path.open("wb") as file:
        for _ in range(SIZE // len(BLOCK)):
            file.write(BLOCK)
    filing.desktop.account.give(path)
    filing.window = filing.desktop.file_manager.open(elsewhere)
    filing.desktop.file_manager.select_all([path])
    return path


@pytest.fixture
def taxes(filing):
    return filing.cabinet / "Taxes"


def begin(filing, mode):
    filing.invoke(mode)
    filing.choose("taxes")
    filing.desktop.keyboard.tap("Return")


def wait_for_progress(filing, title):
    window = filing.desktop.windows.wait_for(WINDOW_CLASS, f"{title}")
    filing.desktop.windows.wait_until_active(window)
    return window


def names(folder) -> list:
    """Hidden ones, too."""
    return sorted(path.name for path in folder.iterdir())


def test_a_long_move_shows_how_far_it_is(filing, film, taxes):
    begin(filing, MOVE)
    window = wait_for_progress(filing, "Moving to Taxes")
    client = window.client
    before = filing.desktop.windows.pixels(client)
    wait_until(lambda: filing.desktop.windows.pixels(client) != before, "it shows progress")
    assert window.is_viewable(), "and is still there"
    filing.wait_for_action("Moved", [NAME], taxes)
    wait_until(lambda: not window.is_viewable(), "its window is gone")
    filing.desktop.brimwick.wait_until_hidden()
    assert names(film.parent) == []
    assert names(taxes) == [NAME]
    assert (taxes / NAME).stat().st_size == SIZE


@pytest.mark.parametrize("mode, verb, doing", [(COPY, "copying", "Copying"), (MOVE, "moving", "Moving")])
def test_a_long_action_is_cancelled_by_escape_and_leaves_nothing(filing, film, taxes, mode, verb, doing):
    begin(filing, mode)
    window = wait_for_progress(filing, f"{doing} to Taxes")
    filing.desktop.keyboard.tap("Escape")
    told = f'Error {verb} file: Could not copy "{film}" to "{taxes}": Operation canceled'
    wait_until(lambda: filing.action_texts() == [told], lambda: f"told: {filing.action_texts()}")
    wait_until(lambda: not window.is_viewable(), "its window is gone")
    filing.desktop.brimwick.wait_until_hidden()
    assert names(taxes) == []
    assert film.stat().st_size == SIZE
    # All is as before.
    filing.wait_until_files_are_back_in_front()
    filing.show_selected({"a.txt": b"a"})
    filing.invoke(mode)
    filing.choose("taxes")
    filing.confirm()
    wait_until(lambda: contents(taxes) == {"a.txt": b"a"}, "the next one is done")


def test_keys_and_clicks_for_other_windows_wait_for_the_end_of_a_long_action(filing, film, taxes):
    begin(filing, COPY)
    window = wait_for_progress(filing, "Copying to Taxes")
    picker = filing.desktop.brimwick.picker()
    filing.desktop.mouse.click(*filing.places(COPY).close_button())
    filing.press_hot_key(MOVE)
    # Together: either both are gone with the end of the work, or both still stand.
    assert picker.is_viewable() >= window.is_viewable()
    filing.wait_for_action("Copied", [NAME], taxes)
    # The hot key was not lost.
    filing.desktop.brimwick.wait_for_picker()
    filing.desktop.keyboard.tap("Escape")


def test_after_a_crash_in_a_long_move_the_next_start_cleans_up_and_says_so(filing, film, taxes):
    begin(filing, MOVE)
    wait_until(lambda: any(name.endswith(".part") for name in names(taxes)), "the move is under way")
    process = filing.desktop.brimwick.process
    process.send(signal.SIGKILL)
    process.wait(10)
    assert len(names(taxes)) == 1
    filing.desktop.brimwick.start()
    told = f"Cleaned up after an interrupted move of file {NAME}, which is still in folder {film.parent}"
    wait_until(lambda: told in filing.action_texts(), lambda: f"told: {filing.action_texts()}")
    assert names(taxes) == []
    assert names(film.parent) == [NAME]
    assert film.stat().st_size == SIZE
