"""How long it takes until files are moved or copied, and safely on the disk."""

import itertools
import os
import shutil
import subprocess
import tempfile
from pathlib import Path

from .machine import file_system
from .programs import found
from .timing import CannotMeasure, median_seconds, run_timed
from .trees import REPOSITORY
from .walking import OURS

DRIVER = REPOSITORY / "build/release/tests/file-action-driver"
OTHER_FILE_SYSTEM = Path("/dev/shm")
MEGABYTE = 1_000_000


class Ground:
    """A folder on the disk and one on another file system, gone in the end. A context manager.

    Nothing is deleted before: a file system may take its time with numbers of files that were deleted lately, and
    the next program would pay for it.
    """

    def __init__(self, files: int, large: int):
        """So many small files, and a file of so many bytes."""
        self._files, self.large = files, large
        self._numbers = itertools.count()

    def __enter__(self):
        # Beside what was built, whatever is mounted where the trees lie: a flush shall have something to do.
        self.disk = Path(tempfile.mkdtemp(prefix="transfers-", dir=REPOSITORY / "build"))
        self.other = Path(tempfile.mkdtemp(prefix="brimwick-transfers-", dir=OTHER_FILE_SYSTEM))
        if self.disk.stat().st_dev == self.other.stat().st_dev:
            raise CannotMeasure(f"{self.disk} and {self.other} lie on one file system")
        self.home = self.folder()
        return self

    def __exit__(self, *_):
        for side in (self.disk, self.other):
            subprocess.run(["rm", "-rf", side], check=True)

    def folder(self, side=None) -> Path:
        folder = (side or self.disk) / str(next(self._numbers))
        folder.mkdir()
        return folder

    def tree(self, side=None) -> Path:
        """A folder with the small files."""
        folder = self.folder(side)
        for number in range(self._files):
            (folder / f"file {number}.txt").write_text(f"content of file {number}\n" * (number % 20))
        return folder

    def large_file(self) -> Path:
        path = self.folder() / "large"
        block = os.urandom(MEGABYTE)
        with path.open("wb") as file:
            for _ in range(self.large // len(block)):
                file.write(block)
        return path


def ours(ground: Ground, verb: str):
    return lambda target, sources: [str(DRIVER), "--home", str(ground.home), verb, str(target), *map(str, sources)]


def shell(script: str):
    """A command of the shell that sees the target as $0 and the sources as its arguments."""
    return lambda target, sources: [found("sh"), "-c", script, str(target), *map(str, sources)]


class Case:
    """Contestants that do the same, and how much longer than the others we may take."""

    def __init__(self, name: str, limit: float, contestants: dict, sources, fresh: bool):
        self.name, self.limit, self._contestants, self._sources = name, limit, contestants, sources
        # Whether sources must be made for every run, since a run uses them up.
        self._fresh = fresh

    def measure(self, ground: Ground, rounds: int) -> dict:
        names = list(self._contestants)
        runs = {name: [] for name in names}
        kept = None if self._fresh else self._sources(ground)
        # The first round warms up.
        for number in range(rounds + 1):
            shift = number % len(names)
            for name in names[shift:] + names[:shift]:
                sources = self._sources(ground) if self._fresh else kept
                target = ground.folder()
                os.sync()
                run = run_timed(self._contestants[name](target, sources))
                arrived = sum(1 for _ in target.iterdir())
                if arrived != len(sources):
                    raise CannotMeasure(f"{self.name}: of {len(sources)} items {name} left {arrived} in the target")
                if sum(path.stat().st_size for path in target.iterdir()) >= ground.large:
                    shutil.rmtree(target)
                if number:
                    runs[name].append(run)
        seconds = {name: median_seconds(of_one) for name, of_one in runs.items()}
        honest = names[1]
        return {
            "name": self.name,
            "seconds": seconds,
            "rival": honest,
            "ratio": seconds[OURS] / seconds[honest],
            "limit": self.limit,
        }


def files_of(tree: Path) -> list:
    return sorted(tree.iterdir())


def cases(ground: Ground, files: int) -> list:
    many = f"{files:,} files"
    crossing = shell('cp -a -- "$@" "$0" && sync -f "$0" && rm -r -- "$@"')
    copying = shell('cp -a -- "$@" "$0" && sync -f "$0"')
    moving = shell('mv -n -t "$0" -- "$@"')
    move, copy = ours(ground, "move"), ours(ground, "copy")
    gio = {"move": shell('gio move -- "$@" "$0"'), "copy": shell('gio copy -p -- "$@" "$0"')}
    found("gio")
    return [
        Case(f"move of {many}", 1.2, {OURS: move, "mv -n": moving, "gio": gio["move"]},
             lambda ground: files_of(ground.tree()), True),
        Case(f"move of a folder of {many}", 1.2, {OURS: move, "mv -n": moving}, lambda ground: [ground.tree()], True),
        Case(f"copy of {many}", 1.1, {OURS: copy, "cp -a, sync": copying, "gio": gio["copy"]},
             lambda ground: files_of(ground.tree()), False),
        Case(f"copy of a folder of {many}", 1.1, {OURS: copy, "cp -a, sync": copying},
             lambda ground: [ground.tree()], False),
        Case(f"copy of a file of {ground.large / 1e9:g} GB", 1.1, {OURS: copy, "cp -a, sync": copying, "gio": gio["copy"]},
             lambda ground: [ground.large_file()], False),
        Case(f"move of {many} to another disk", 1.2, {OURS: move, "cp -a, sync, rm -r": crossing},
             lambda ground: files_of(ground.tree(ground.other)), True),
        Case(f"move of a folder of {many} to another disk", 1.2, {OURS: move, "cp -a, sync, rm -r": crossing},
             lambda ground: [ground.tree(ground.other)], True),
    ]  # fmt: skip


def measure_transfers(files: int, large: int, rounds: int) -> dict:
    with Ground(files, large) as ground:
        return {"files": files, "rounds": rounds,
                "disk": file_system(ground.disk), "other": file_system(ground.other),
                "cases": [case.measure(ground, rounds) for case in cases(ground, files)]}  # fmt: skip
