"""What a screen reader is told: Brimwick's controls on the accessibility bus."""

import json
import shutil
from dataclasses import dataclass
from pathlib import Path

from .waiting import wait_until
from .windows import Rectangle

# To be given to Brimwick at its start.
ENVIRONMENT = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_ACCESSIBILITY": "1", "NO_AT_BRIDGE": "0"}

LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
CHECKED, ENABLED, FOCUSABLE, FOCUSED = 4, 8, 11, 12


@dataclass(frozen=True)
class Control:
    """A control as it was when it was asked for."""

    role: str
    name: str
    description: str
    states: frozenset
    place: Rectangle

    @property
    def middle(self) -> tuple:
        """On the screen."""
        return self.place.x + self.place.width // 2, self.place.y + self.place.height // 2


class Accessibility:
    """The bus; Brimwick is started after it, with the ENVIRONMENT of this module."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._program = desktop.account.base / "accessible_controls.py"
        shutil.copyfile(Path(__file__).with_name("accessible_controls.py"), self._program)
        desktop.children.start("accessibility", [LAUNCHER, "--launch-immediately"], ENVIRONMENT)

    def controls(self, window: str) -> list:
        """All that can be seen in the window of that title, the window itself first; empty while there is none."""
        done = self._desktop.children.run(["/usr/bin/python3", self._program, window])
        lines = [json.loads(line) for line in done.stdout.splitlines()] if done.returncode == 0 else []
        return [
            Control(line["role"], line["name"], line["description"], frozenset(line["states"]), Rectangle(*line["place"]))
            for line in lines
        ]

    def wait_for(self, window: str, name: str) -> Control:
        """Waits for the control of that name."""

        def found():
            return next((control for control in self.controls(window) if control.name == name), None)

        return wait_until(found, lambda: f"{name!r} is there, besides {[each.name for each in self.controls(window)]}")
