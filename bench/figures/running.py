"""What the installed program costs while it runs, on a virtual desktop: memory, keys, idling, and new folders."""

import math
import os
import statistics
import sys
import time
from contextlib import contextmanager
from pathlib import Path

from .timing import percentile
from .trees import REPOSITORY
from .walking import walk_once

sys.path.insert(0, str(REPOSITORY / "tests/desktop"))

from harness import Desktop, WaitedTooLong, wait_until  # noqa: E402
from harness.appearance import PaintWatch  # noqa: E402
from harness.picker import HOT_KEYS, OPEN, PickerPlaces  # noqa: E402

WATCH_LIMIT = Path("/proc/sys/fs/inotify/max_user_watches")
WORDS = ("records", "museum", "stories", "ledger", "opera", "e", "re")
EARLY_WORDS = ("records", "e", "re", "museum")
NEW_NAME = "qxz"
STILL_FOR = 1.0
IDLE_SECONDS = 10.0
NEVER_AFTER = 30.0


def watches_every(folders: int) -> bool:
    """Whether the system lets a program watch so many folders."""
    return int(WATCH_LIMIT.read_text()) > folders


@contextmanager
def room_for_watches(folders: int):
    """While it lasts, every folder can be watched, if we may see to that."""
    before = WATCH_LIMIT.read_text()
    raised = not watches_every(folders + 1000) and os.access(WATCH_LIMIT, os.W_OK)
    if raised:
        WATCH_LIMIT.write_text(str(folders + 100_000))
    try:
        yield
    finally:
        if raised:
            WATCH_LIMIT.write_text(before)


class Process:
    """What the kernel says of a running program."""

    def __init__(self, pid: int):
        self._folder = Path(f"/proc/{pid}")

    def processor_ticks(self) -> int:
        """Of all threads, in the program and in the system; a tick is 1/100 s."""
        fields = (self._folder / "stat").read_text().rpartition(")")[2].split()
        return int(fields[11]) + int(fields[12])

    def peak_bytes(self) -> int:
        line = next(line for line in (self._folder / "status").read_text().splitlines() if line.startswith("VmHWM"))
        return int(line.split()[1]) * 1024

    def wait_until_idle(self, timeout=300.0):
        """Until it has used no processor time for a while."""
        ticks, since = self.processor_ticks(), time.monotonic()

        def idle():
            nonlocal ticks, since
            now = self.processor_ticks()
            if now != ticks:
                ticks, since = now, time.monotonic()
            return time.monotonic() - since >= STILL_FOR

        wait_until(idle, "the program is idle", timeout)


class RunningProgram:
    """Brimwick with one tree as its only indexed folder."""

    def __init__(self, desktop: Desktop, tree: Path):
        self._desktop = desktop
        self._windows = desktop.windows
        self._tree = tree
        (inbox,) = desktop.make_folder("inbox")
        desktop.preferences.write([tree])
        # Something must be in front for the hot key to be pressed over.
        self._window = desktop.file_manager.open(inbox)
        start = time.monotonic()
        child = desktop.brimwick.start(timeout=300.0)
        self.seconds_until_ready = time.monotonic() - start
        self.process = Process(child.pid)
        self._rows = self._watch = None

    def idle_ticks(self) -> int:
        """The processor time used in a span of doing nothing."""
        self.process.wait_until_idle()
        before = self.process.processor_ticks()
        time.sleep(IDLE_SECONDS)
        return self.process.processor_ticks() - before

    @contextmanager
    def _picker(self):
        self._desktop.keyboard.chord(HOT_KEYS[OPEN])
        window = self._desktop.brimwick.wait_for_picker()
        self._rows = PickerPlaces(window, OPEN).results_area()
        self._watch = PaintWatch(self._desktop.display.get_display_name(), window, self._rows)
        try:
            yield
        finally:
            self._desktop.keyboard.tap("Escape")
            self._desktop.brimwick.wait_until_hidden()
            self._desktop.windows.wait_until_active(self._window)

    def key_press_milliseconds(self, words) -> list:
        """From each key of some words, typed and taken back letter by letter, until its first rows are painted as
        they stay."""
        keys = [key for word in words for key in [*word, *["BackSpace"] * len(word)]]
        with self._picker():
            self._type_watched(keys[:2])
            return self._type_watched(keys)

    def _type_watched(self, keys) -> list:
        times = []
        for key in keys:
            self._watch.forget()
            pressed = time.monotonic()
            self._desktop.keyboard.tap(key)
            painted = self._watch.wait_until_settled()
            times.append((painted - pressed) * 1000)
        return times

    def new_folder_milliseconds(self, count: int):
        """From making a folder until the picker, which lists the names with a text that it is made to have, shows
        it; infinite for one that it never shows, after which no more are made. And how long a walk by itself took,
        before each after the same rest: after one it takes longer than after another walk."""
        times, walks = [], []
        with self._picker():
            self._type_watched(NEW_NAME)
            while len(times) < count and math.inf not in times:
                self.process.wait_until_idle()
                walks.append(walk_once(self._tree)["seconds"] * 1000)
                folder = self._tree / f"{NEW_NAME} {len(times)}"
                rows = self._windows.pixels(self._rows)
                try:
                    times.append(self._milliseconds_until_shown(folder))
                finally:
                    folder.rmdir()
                # Only so many rows are watched: the next folder is to be the first again.
                wait_until(lambda: self._windows.pixels(self._rows) == rows, "the row is gone", NEVER_AFTER)
        return times, walks

    def _milliseconds_until_shown(self, folder: Path) -> float:
        self.process.wait_until_idle()
        rows = self._windows.pixels(self._rows)
        self._watch.forget()
        start = time.monotonic()
        folder.mkdir()
        # The rows of the names that were there before may be painted again, which is not it.
        while True:
            try:
                painted = self._watch.wait(NEVER_AFTER)
            except WaitedTooLong:
                return math.inf
            if self._windows.pixels(self._rows) != rows:
                return (painted - start) * 1000


def measure_running_program(tree: Path, folders: int, new_folders: int = 5) -> dict:
    """The figures of the program with this tree; those that need every folder watched only where that is so."""
    with room_for_watches(folders), Desktop() as desktop:
        program = RunningProgram(desktop, tree)
        # While it still sets its watches.
        early = program.key_press_milliseconds(EARLY_WORDS)
        program.process.wait_until_idle()
        figures = {
            "folders": folders,
            "seconds_until_ready": program.seconds_until_ready,
        }
        if watches_every(folders):
            figures["idle_ticks"] = program.idle_ticks()
            figures["idle_seconds"] = IDLE_SECONDS
        keys = program.key_press_milliseconds(WORDS)
        figures["key_presses"] = len(keys)
        figures["early_key_press_milliseconds"] = {"p95": percentile(early, 0.95)}
        figures["key_press_milliseconds"] = {"median": statistics.median(keys), "p95": percentile(keys, 0.95)}
        if watches_every(folders):
            times, walks = program.new_folder_milliseconds(new_folders)
            figures["new_folder_milliseconds"] = max(times) if math.inf in times else statistics.median(times)
            figures["walk_milliseconds"] = statistics.median(walks)
        figures["peak_bytes"] = program.process.peak_bytes()
        return figures
