"""The sweep finds what it looks for: what drivers do wrong that move and copy as plain tools do."""

import tempfile
from pathlib import Path

import pytest

from power import sweep_power
from scenarios import Scenario
from sweep import ground, sweep

LOOKING_DRIVER = """#!/bin/sh
[ "$3" != recover ] || exit 0
[ -e "$4/letter.txt" ] || exec mv -f -t "$4" -- "$5"
"""
PLAIN_DRIVER = """#!/bin/sh
# --home FOLDER move|copy TARGET SOURCE, or recover, which it does not
case $3 in
move) exec mv -f -t "$4" -- "$5" ;;
copy) exec cp -a -t "$4" -- "$5" ;;
esac
"""


@pytest.fixture
def base():
    with tempfile.TemporaryDirectory(prefix="brimwick-safety-") as folder:
        Path(folder).chmod(0o755)
        yield Path(folder)


def kinds_found(scenario, driver, base) -> set:
    program = base / "driver"
    program.write_text(driver)
    with ground(scenario.crossing, base / "ground", program) as here:
        return {defect for _, defects in sweep(scenario, here) for defect in defects}


@pytest.mark.parametrize(
    ("scenario", "expected"),
    [
        (Scenario("move", False, "taken"), {"overwritten"}),
        (Scenario("move", True, "large"), {"partial", "late edit"}),
        (Scenario("copy", True, "taken"), {"overwritten"}),
        (Scenario("copy", True, "large"), {"partial", "untrue"}),
    ],
    ids=lambda value: getattr(value, "name", "defects"),
)
def test_it_finds_the_defects_of_plain_tools(base, scenario, expected):
    assert expected <= kinds_found(scenario, PLAIN_DRIVER, base)


def test_it_finds_that_a_name_was_looked_for_and_then_taken_by_another(base):
    assert "overwritten" in kinds_found(Scenario("move", False, "file"), LOOKING_DRIVER, base)


def test_it_finds_what_a_power_cut_takes_from_who_does_not_flush(base):
    scenario = Scenario("move", True, "large")
    program = base / "driver"
    program.write_text(PLAIN_DRIVER)
    program.chmod(0o755)
    found = {defect for _, defects in sweep_power(scenario, base / "power", program) for defect in defects}
    assert {"lost"} <= found
