"""An input method as people have it: ibus, with engines from its packages."""

import shutil

import pytest

from .waiting import wait_until


class InputMethod:
    """Runs while it is entered. Programs take part when they are started with `environment`."""

    environment = {"QT_IM_MODULE": "ibus"}

    def __init__(self, desktop):
        if not shutil.which("ibus-daemon"):
            pytest.skip("ibus is not installed")
        self._children = desktop.children

    def __enter__(self):
        self._daemon = self._children.start(
            "ibus", ["ibus-daemon", "--panel", "disable", "--emoji-extension", "disable"], {}
        )
        self.use("xkb:us::eng")
        return self

    def __exit__(self, *_):
        self._daemon.stop()

    def use(self, engine: str):
        """Switches to an engine: "xkb:us::eng" hands every key on, "hangul" makes syllables of them."""
        wait_until(
            lambda: self._children.run(["ibus", "engine", engine]).returncode == 0,
            lambda: f"ibus uses {engine}: {self._daemon.stderr()}",
        )
