"""A fresh desktop for every test; at its end brimwick must end well and have had nothing to complain about."""

import os
import shutil
from pathlib import Path

import pytest

from filing import Filing
from harness import Desktop
from harness.window_manager import OPENBOX


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    report = (yield).get_result()
    if report.when == "call":
        item.failed = report.failed


@pytest.fixture
def desktop(request):
    """A desktop of the test's own.

    The test fails if brimwick crashed, does not end with 0, or wrote a line to stderr that was not announced.
    """
    marker = request.node.get_closest_marker("desktop")
    wanted = marker.kwargs if marker else {}
    window_manager = wanted.get("window_manager", OPENBOX)
    if not shutil.which(window_manager):
        pytest.skip(f"{window_manager} is not installed")
    with Desktop(**wanted) as desktop:
        yield desktop
        if getattr(request.node, "failed", True):
            _keep_evidence(desktop, request.node.name)
        code = desktop.brimwick.end()
        if code not in (None, 0):
            pytest.fail(f"brimwick ended with {code}:\n{desktop.brimwick.process.stderr()}", pytrace=False)
        expected = request.node.get_closest_marker("expected_stderr")
        stray = desktop.brimwick.stray_lines(expected.args if expected else ())
        if stray:
            pytest.fail("brimwick wrote to stderr:\n" + "\n".join(stray), pytrace=False)


@pytest.fixture
def filing(desktop):
    """Brimwick runs and knows the folders of `Filing`."""
    filing = Filing(desktop)
    desktop.brimwick.start()
    return filing


def _keep_evidence(desktop, name):
    # Where CI collects what failed; without the variable nothing is kept.
    folder = os.environ.get("BRIMWICK_TEST_EVIDENCE")
    if folder:
        evidence = Path(folder) / name
        shutil.rmtree(evidence, ignore_errors=True)
        shutil.copytree(desktop.account.logs, evidence)
        desktop.screenshot(evidence / "screen.png")
