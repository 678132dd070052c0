"""A tree of many files moved to and fro between two disks by a driver that is killed at random moments."""

import collections
import os
import random
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from faults import AS_USER, recover
from snapshot import snapshot
from sweep import ground
from world import HIDDEN, give, make_file

FILES = 2000
FOLDERS = 40
# Of the recoveries, so many are killed too.
RECOVERIES_KILLED = 0.2


def _make_tree(path: Path):
    for folder in range(FOLDERS):
        (path / f"folder {folder}").mkdir(parents=True)
    for number in range(FILES):
        make_file(path / f"folder {number % FOLDERS}" / f"{number}.txt", f"content of {number}\n".encode() * (number % 50))


class Kills:
    """Two folders on two disks, one of which holds the tree."""

    def __init__(self, sides: tuple, driver: Path, chance: random.Random):
        self._driver, self._chance = driver, chance
        self._folders = [side / "folder" for side in sides]
        self._home = sides[0] / "home"
        for folder in (*self._folders, self._home):
            folder.mkdir()
        _make_tree(self._folders[0] / "tree")
        for folder in (*self._folders, self._home):
            give(folder)
        self._whole = snapshot(self._folders[0] / "tree")
        self._seconds = self._measure()
        # How often the killed driver left what.
        self.met = collections.Counter()

    def _measure(self) -> float:
        begin = time.monotonic()
        assert self._run(self._move(), None) == 0
        return time.monotonic() - begin

    def _move(self) -> list:
        source, target = self._folders if (self._folders[0] / "tree").exists() else reversed(self._folders)
        return ["--home", self._home, "move", target, source / "tree"]

    def _run(self, arguments: list, seconds) -> int:
        """The exit status; the driver is killed after so many seconds."""
        process = subprocess.Popen(
            [self._driver, *arguments], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **AS_USER
        )
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            process.kill()
            return process.wait()

    def kill_once(self) -> list:
        """Moves, kills, recovers; yields what is wrong afterwards."""
        self._run(self._move(), self._chance.uniform(0, self._seconds))
        self.met[self._state()] += 1
        if self._chance.random() < RECOVERIES_KILLED:
            self._run(["--home", self._home, "recover"], self._chance.uniform(0, self._seconds))
        told = recover(self._driver, self._home)
        names = sorted(path.name for folder in self._folders for path in folder.iterdir())
        if names != ["tree"]:
            return [f"there are {names}; told: {told}"]
        tree = next(folder / "tree" for folder in self._folders if (folder / "tree").exists())
        return [] if snapshot(tree) == self._whole else [f"{tree} is not whole; told: {told}"]

    def _state(self) -> str:
        names = [path.name for folder in self._folders for path in folder.iterdir()]
        hidden = {name.rpartition(".")[2] for name in names if name.startswith(HIDDEN)}
        return " and ".join(sorted(hidden)) or f"{len(names)} with its name"


def kill(times: int, seed) -> tuple:
    """Returns what was wrong, and how often each state was met."""
    with tempfile.TemporaryDirectory(prefix="brimwick-safety-") as base:
        Path(base).chmod(0o755)
        with ground(True, Path(base) / "ground") as here:
            kills = Kills(here.sides, here.driver, random.Random(f"{seed} kills"))
            wrong = [f"kill {number}: {what}" for number in range(times) for what in kills.kill_once()]
            return wrong, kills.met


def main():
    times = int(sys.argv[1])
    wrong, met = kill(times, os.environ.get("BRIMWICK_SAFETY_SEED", "1"))
    print(f"{times} kills at random moments left:", ", ".join(f"{state} {count}" for state, count in met.most_common()))
    print(f"{len(wrong)} times the tree was not whole at one place afterwards", *wrong, sep="\n    ", flush=True)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
