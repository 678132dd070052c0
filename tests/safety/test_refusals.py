"""What a user meets without any fault of a disk: no room, no permission, what has vanished, a file system that cannot
rename without replacing. Nothing is lost, and the message names the path and the reason."""

import re
import subprocess
import tempfile
from pathlib import Path

import pytest

from faults import AS_USER, Fault, recover, run_with
from mounts import Mounts
from snapshot import snapshot
from sweep import ground
from world import HIDDEN, give, make_file, make_tree

ACTIONS = ("move", "copy")


@pytest.fixture
def mounts():
    with tempfile.TemporaryDirectory(prefix="brimwick-safety-") as base:
        Path(base).chmod(0o755)
        with ground(False, Path(base) / "ground") as here, Mounts(Path(base)) as mounts:
            mounts.driver = here.driver
            yield mounts


def texts(told: str) -> str:
    """What the user is told, without the times."""
    return re.sub(r"^\d+:\d\d:\d\d [AP]M\n", "", told, flags=re.MULTILINE)


class Place:
    """A source with a tree and a letter, and an empty target; `run` performs one action as the user."""

    def __init__(self, mounts, target: Path):
        self._driver = mounts.driver
        side = mounts.tmpfs("source-side")
        self.source, self.home, self.target = side / "source", side / "home", target
        for folder in (self.source, self.home):
            folder.mkdir()
        make_tree(self.source / "tree")
        make_file(self.source / "letter.txt", b"a letter")
        give(side)
        give(target)
        self.before = snapshot(self.source)

    def command(self, action, *names):
        return [self._driver, "--home", self.home, action, self.target, *(self.source / name for name in names)]

    def run(self, action, *names):
        """The exit status, and what the user is told."""
        done = subprocess.run(self.command(action, *names), capture_output=True, text=True, timeout=60, **AS_USER)
        return done.returncode, texts(done.stderr)

    def expect_refusal(self, action, name, path, reason):
        code, told = self.run(action, name)
        assert code == 1
        assert told.startswith("Error moving file: " if action == "move" else "Error copying file: ")
        assert f'"{path}"' in told and reason in told, told
        self.expect_untouched()

    def expect_untouched(self):
        assert snapshot(self.source) == self.before
        if self.target.is_dir():
            assert list(self.target.iterdir()) == []
        assert recover(self._driver, self.home) == ""


@pytest.mark.parametrize("action", ACTIONS)
def test_on_a_disk_that_has_no_room_it_is_said_before_anything_is_copied(mounts, action):
    place = Place(mounts, mounts.mount("tmpfs", "tmpfs", mounts.folder("small"), "size=256k"))
    make_file(place.source / "film", b"f" * 1_000_000)
    give(place.source)
    place.before = snapshot(place.source)
    reason = "No space left on device (it takes 1.0 MB, and 262 kB are free)"
    place.expect_refusal(action, "film", place.source / "film", reason)


@pytest.mark.parametrize("action", ACTIONS)
def test_on_a_disk_that_becomes_full_nothing_is_left(mounts, action):
    place = Place(mounts, mounts.mount("tmpfs", "tmpfs", mounts.folder("small"), "size=64k"))
    # Each takes more than it holds.
    for number in range(40):
        make_file(place.source / "tree" / f"{number}", b"x")
    give(place.source)
    place.before = snapshot(place.source)
    place.expect_refusal(action, "tree", place.target, "No space left on device")


@pytest.mark.parametrize("action", ACTIONS)
@pytest.mark.parametrize("name", ["letter.txt", "tree"])
def test_a_read_only_target_is_refused(mounts, action, name):
    place = Place(mounts, mounts.tmpfs("read-only"))
    subprocess.run(["mount", "-o", "remount,ro", place.target], check=True)
    place.expect_refusal(action, name, place.source / name, "Read-only file system")


def test_from_a_read_only_disk_nothing_is_moved_and_no_copy_is_left(mounts):
    place = Place(mounts, mounts.tmpfs("target"))
    subprocess.run(["mount", "-o", "remount,ro", place.source.parent], check=True)
    place.expect_refusal("move", "tree", place.source / "tree", "Read-only file system")
    code, told = place.run("copy", "letter.txt")
    assert (code, told) == (0, f"Copied file letter.txt to folder {place.target}\n")


@pytest.mark.parametrize("action", ACTIONS)
def test_a_target_that_may_not_be_written_is_refused(mounts, action):
    place = Place(mounts, mounts.tmpfs("target"))
    place.target.chmod(0o555)
    place.expect_refusal(action, "tree", place.source / "tree", "Permission denied")


def test_from_a_folder_that_may_not_be_written_nothing_is_moved_and_no_copy_is_left(mounts):
    place = Place(mounts, mounts.tmpfs("target"))
    place.source.chmod(0o555)
    place.before = snapshot(place.source)
    place.expect_refusal("move", "tree", place.source / "tree", "Permission denied")


@pytest.mark.parametrize("action", ACTIONS)
def test_a_folder_with_a_file_that_may_not_be_read_is_left_alone(mounts, action):
    place = Place(mounts, mounts.tmpfs("target"))
    (place.source / "tree" / "first").chmod(0)
    place.before = snapshot(place.source)
    # Root reads everything; the driver does not run as root.
    place.expect_refusal(action, "tree", place.source / "tree" / "deep" / "also first", "Permission denied")


@pytest.mark.parametrize("action", ACTIONS)
def test_a_target_that_has_vanished_is_refused(mounts, action):
    place = Place(mounts, mounts.tmpfs("target"))
    place.target = place.target / "gone"
    place.expect_refusal(action, "letter.txt", place.target, "No such file or directory")


@pytest.mark.parametrize("action", ACTIONS)
def test_a_source_that_vanishes_at_the_last_moment_is_told(mounts, action):
    place = Place(mounts, mounts.tmpfs("target"))
    letter = place.source / "letter.txt"
    # It is still there when it is looked whether it can be read.
    run = run_with(Fault("faccessat2", 1, "RACE"), place.command(action, "letter.txt"), letter.unlink)
    assert run.met and run.code == 1
    assert f'"{letter}"' in run.told and "No such file or directory" in run.told, run.told
    assert list(place.target.iterdir()) == []


def test_a_source_that_has_vanished_is_left_out_silently_and_the_others_are_moved(mounts):
    place = Place(mounts, mounts.tmpfs("target"))
    code, told = place.run("move", "gone", "letter.txt")
    assert code == 1, "not all were handled"
    assert told == f"Moved file letter.txt to folder {place.target}\n"


class TestAFileSystemWithoutRenamesThatDoNotReplace:
    """bindfs knows none."""

    @pytest.fixture
    def place(self, mounts):
        below, at = mounts.tmpfs("below"), mounts.folder("bind")
        below.chmod(0o777)
        log = below.parent / "bindfs.log"
        mounts.by_program(["bindfs", "-f", "-o", "allow_other", below, at], "bindfs", at, log)
        target = at / "target"
        target.mkdir()
        return Place(mounts, target)

    @pytest.mark.parametrize("action", ACTIONS)
    @pytest.mark.parametrize("name", ["letter.txt", "tree"])
    def test_items_arrive_whole_and_replace_nothing(self, place, action, name):
        taken = make_file(place.target / name, b"there before")
        before, item = snapshot(taken), snapshot(place.source / name)
        code, told = place.run(action, name)
        numbered = place.target / ("letter(1).txt" if name == "letter.txt" else "tree(1)")
        assert (code, told) == (0, f"{'Moved' if action == 'move' else 'Copied'} file {name} to folder {place.target}\n")
        assert snapshot(taken) == before
        assert snapshot(numbered) == item
        assert sorted(place.target.iterdir()) == sorted([taken, numbered])
        assert (place.source / name).exists() == (action == "copy")

    @pytest.mark.parametrize("name", ["letter.txt", "tree"])
    def test_items_are_moved_within_it_and_replace_nothing(self, place, name):
        item = snapshot(place.source / name)
        assert place.run("move", name)[0] == 0
        place.source, place.target = place.target, place.target.parent / "second"
        place.target.mkdir()
        taken = make_file(place.target / name, b"there before")
        give(place.target)
        before = snapshot(taken)
        code, told = place.run("move", name)
        numbered = place.target / ("letter(1).txt" if name == "letter.txt" else "tree(1)")
        assert (code, told) == (0, f"Moved file {name} to folder {place.target}\n")
        assert snapshot(taken) == before
        assert snapshot(numbered) == item
        assert list(place.source.iterdir()) == []
        assert not any(path.name.startswith(HIDDEN) for path in place.target.iterdir())
