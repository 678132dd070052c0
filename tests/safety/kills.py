"""Many files, in a tree or single ones, moved to and fro between two disks by a driver that is killed at random moments."""

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


def _make_tree(folder: Path):
    for number in range(FOLDERS):
        (folder / "tree" / f"folder {number}").mkdir(parents=True)
    for number in range(FILES):
        _make_file(folder / "tree" / f"folder {number % FOLDERS}", number)


def _make_single_files(folder: Path):
    for number in range(FILES):
        _make_file(folder, number)


def _make_file(folder: Path, number: int):
    make_file(folder / f"{number}.txt", f"content of {number}\n".encode() * (number % 50))


# What is moved, and what makes it.
SHAPES = {"a tree": _make_tree, "single files": _make_single_files}


class Kills:
    """Two folders on two disks, which hold items of some shape."""

    def __init__(self, sides: tuple, driver: Path, shape: str, chance: random.Random):
        self._driver, self._chance = driver, chance
        self._folders = [side / shape for side in sides]
        self._home = sides[0] / f"home of {shape}"
        for folder in (*self._folders, self._home):
            folder.mkdir()
        SHAPES[shape](self._folders[0])
        for folder in (*self._folders, self._home):
            give(folder)
        self._whole = {path.name: snapshot(path) for path in self._folders[0].iterdir()}
        self._seconds = self._measure()
        # How often the killed driver left what.
        self.met = collections.Counter()

    def _measure(self) -> float:
        begin = time.monotonic()
        assert self._run(self._move(), None) == 0
        return time.monotonic() - begin

    def _move(self) -> list:
        source, target = sorted(self._folders, key=lambda folder: len(os.listdir(folder)), reverse=True)
        return ["--home", self._home, "move", target, *sorted(source.iterdir())]

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
        lying = [path for folder in self._folders for path in folder.iterdir()]
        if sorted(path.name for path in lying) != sorted(self._whole):
            odd = collections.Counter(path.name for path in lying)
            odd.subtract(self._whole.keys())
            return [f"of these there are more or fewer than one: {+odd} {-odd}; told: {told}"]
        broken = [str(path) for path in lying if snapshot(path) != self._whole[path.name]]
        return [f"not whole: {broken}; told: {told}"] if broken else []

    def _state(self) -> str:
        names = [name for folder in self._folders for name in os.listdir(folder)]
        hidden = {name.rpartition(".")[2] for name in names if name.startswith(HIDDEN)}
        return " and ".join(sorted(hidden)) or ("all moved" if len(names) == len(self._whole) else "copies with names")


def kill(times: int, shape: str, seed) -> tuple:
    """Returns what was wrong, and how often each state was met."""
    with tempfile.TemporaryDirectory(prefix="brimwick-safety-") as base:
        Path(base).chmod(0o755)
        with ground(True, Path(base) / "ground") as here:
            kills = Kills(here.sides, here.driver, shape, random.Random(f"{seed} kills of {shape}"))
            wrong = [f"kill {number}: {what}" for number in range(times) for what in kills.kill_once()]
            return wrong, kills.met


def main():
    times = int(sys.argv[1])
    failed = False
    for shape in SHAPES:
        wrong, met = kill(times, shape, os.environ.get("BRIMWICK_SAFETY_SEED", "1"))
        states = ", ".join(f"{state} {count}" for state, count in met.most_common())
        print(f"{times} kills at random moments of a move of {shape} left: {states}")
        print(f"{len(wrong)} times not all lay whole at one place afterwards", *wrong, sep="\n    ", flush=True)
        failed = failed or bool(wrong)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
