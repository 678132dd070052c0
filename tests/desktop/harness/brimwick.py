"""The program under test."""

import os
import shutil
import signal
from pathlib import Path

from .preferences_window import TITLE, PreferencesWindow
from .waiting import wait_until

WINDOW_CLASS = "org.brimwick.Brimwick"
READY = "Index initialization complete."
REPOSITORY = Path(__file__).resolve().parents[3]
# What a program built with sanitizers needs to live with the preloaded nss_wrapper.
SANITIZERS = {
    "ASAN_OPTIONS": "verify_asan_link_order=0",
    "LSAN_OPTIONS": f"print_suppressions=0:suppressions={REPOSITORY / 'tests/sanitizers/lsan.supp'}",
    "NSS_WRAPPER_DISABLE_DEEPBIND": "1",
}


def installed_binary() -> Path:
    """The installed program: BRIMWICK_BINARY, or that of the release build."""
    return Path(os.environ.get("BRIMWICK_BINARY") or REPOSITORY / "build/release/install/bin/brimwick")


class Brimwick:
    """Starts the installed program on a desktop and asks for its windows."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._process = None
        self._starts_before = 0

    def start(self, *arguments, wait=True, environment=None, timeout=20.0):
        """Starts it, and waits until its index is ready unless told otherwise; returns its process."""
        settings = {**SANITIZERS, **(environment or {})}
        self._starts_before = self.times_ready()
        self._process = self._desktop.children.start("brimwick", [self._reachable_binary(), *arguments], settings)
        if wait:
            wait_until(self._is_ready, lambda: f"the index is ready; stderr: {self._process.stderr()}", timeout)
        return self._process

    def run(self, *arguments, environment=None):
        """Runs another brimwick with arguments to its end, as from a terminal."""
        settings = {**SANITIZERS, **(environment or {})}
        return self._desktop.children.run([self._reachable_binary(), *arguments], environment=settings)

    def open(self, *arguments, **options):
        """Starts another brimwick with arguments; a Popen, whose `options` say where its output goes."""
        return self._desktop.children.open([self._reachable_binary(), *arguments], SANITIZERS, **options)

    @property
    def process(self):
        return self._process

    def end(self):
        """Asks it to end, if it still runs; returns the exit code, or None if it was never started."""
        if self._process is None:
            return None
        if self._process.is_running():
            self._process.send(signal.SIGTERM)
        return self._process.wait(10)

    def stray_lines(self, expected=()) -> list:
        """What it wrote to stderr besides lines that contain one of the expected texts."""
        lines = self._process.stderr().splitlines() if self._process else []
        return [line for line in lines if line and not any(text in line for text in expected)]

    def picker(self):
        """The picker, if it can be seen."""
        found = self._desktop.windows.matching(WINDOW_CLASS, "Brimwick")
        return next((window for window in found if window.is_viewable()), None)

    def wait_for_picker(self):
        """Waits until the picker is there and has the focus."""
        windows = self._desktop.windows
        return wait_until(
            lambda: (picker := self.picker()) and windows.active() == picker and picker,
            lambda: f"the picker has the focus; active: {windows.active()}, all: {windows.all()}",
        )

    def preferences_window(self):
        """The preferences window, if it can be seen."""
        found = self._desktop.windows.matching(WINDOW_CLASS, TITLE)
        return next((window for window in found if window.is_viewable()), None)

    def wait_for_preferences_window(self) -> PreferencesWindow:
        """Waits until the preferences window is there and has the focus."""
        windows = self._desktop.windows
        window = wait_until(
            lambda: (found := self.preferences_window()) and windows.active() == found and found,
            lambda: f"the preferences have the focus; active: {windows.active()}, all: {windows.all()}",
        )
        return PreferencesWindow(windows, window)

    def wait_until_preferences_are_hidden(self):
        wait_until(lambda: self.preferences_window() is None, "the preferences are hidden")

    def wait_until_hidden(self):
        wait_until(lambda: self.picker() is None, "the picker is hidden")

    def _is_ready(self) -> bool:
        if not self._process.is_running():
            raise RuntimeError(f"brimwick ended at once: {self._process.stderr()}")
        # Without a service the texts go to stderr.
        if not self._desktop.notifications:
            return READY in self._process.stderr()
        return self.times_ready() > self._starts_before

    def times_ready(self) -> int:
        """How often it has told that its first index is there, over all its starts."""
        service = self._desktop.notifications
        return service.texts().count(READY) if service else 0

    def _reachable_binary(self) -> Path:
        binary = installed_binary()
        if not binary.exists():
            raise RuntimeError(f"{binary} is missing: build and install first")
        account = self._desktop.account
        if account.reachable(binary):
            return binary
        # A checkout in a folder that only its owner may enter: the desktop's user gets a copy.
        copy = account.base / "installed"
        if not copy.exists():
            shutil.copytree(binary.parent.parent, copy, symlinks=True)
            account.give(copy)
        return copy / "bin" / binary.name
