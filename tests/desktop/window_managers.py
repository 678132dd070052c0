"""Has a test run under each window manager that people use."""

import pytest

from harness.window_manager import KWIN, OPENBOX, XFWM4

under_every_window_manager = pytest.mark.parametrize(
    "window_manager",
    [pytest.param(name, marks=pytest.mark.desktop(window_manager=name)) for name in (OPENBOX, XFWM4, KWIN)],
)
