"""A slice of the sweep: some faults of every scenario, chosen by BRIMWICK_SAFETY_SEED."""

import os
import random
import tempfile
from pathlib import Path

import pytest

from kills import SHAPES, kill
from power import sweep_power
from recoveries import KILLS, sweep_recovery
from scenarios import SCENARIOS
from sweep import ground, sweep

FAULTS_OF_A_SCENARIO = 12
CUTS_OF_A_SCENARIO = 3
RANDOM_KILLS = 12
SEED = os.environ.get("BRIMWICK_SAFETY_SEED", "1")


@pytest.fixture(scope="module", params=[False, True], ids=["same", "cross"])
def here(request):
    with tempfile.TemporaryDirectory(prefix="brimwick-safety-") as base:
        Path(base).chmod(0o755)
        with ground(request.param, Path(base) / "ground") as ground_of_all:
            yield ground_of_all


@pytest.fixture(scope="module")
def here_for_power():
    with tempfile.TemporaryDirectory(prefix="brimwick-safety-") as base:
        Path(base).chmod(0o755)
        with ground(False, Path(base) / "ground") as any_ground:
            yield Path(base), any_ground.driver


@pytest.mark.parametrize("name", sorted({scenario.name.replace("-cross-", "-same-") for scenario in SCENARIOS}))
def test_nothing_is_lost_overwritten_or_left_half_done(here, name):
    crossing = here.sides[0] != here.sides[1]
    wanted = name.replace("-same-", "-cross-") if crossing else name
    scenario = next(scenario for scenario in SCENARIOS if scenario.name == wanted)
    chance = random.Random(f"{SEED} {scenario.name}")
    results = list(sweep(scenario, here, FAULTS_OF_A_SCENARIO, chance))
    assert len(results) == FAULTS_OF_A_SCENARIO
    check(results)


@pytest.mark.parametrize(
    "scenario",
    [scenario for scenario in SCENARIOS if scenario.crossing and not scenario.chain],
    ids=lambda scenario: scenario.name,
)
def test_nothing_is_lost_to_a_power_cut(here_for_power, scenario):
    base, driver = here_for_power
    chance = random.Random(f"{SEED} {scenario.name} power")
    results = list(sweep_power(scenario, base / scenario.name, driver, CUTS_OF_A_SCENARIO, chance))
    assert len(results) == CUTS_OF_A_SCENARIO
    check(results)


@pytest.mark.parametrize("left", KILLS)
def test_a_recovery_with_a_fault_of_its_own_loses_nothing(left):
    with tempfile.TemporaryDirectory(prefix="brimwick-safety-") as base:
        Path(base).chmod(0o755)
        with ground(True, Path(base) / "ground") as here_for_recoveries:
            results = list(sweep_recovery(left, here_for_recoveries, FAULTS_OF_A_SCENARIO, random.Random(f"{SEED} {left}")))
    assert len(results) == FAULTS_OF_A_SCENARIO
    check(results)


@pytest.mark.parametrize("shape", SHAPES)
def test_all_lies_whole_at_one_place_after_kills_at_random_moments(shape):
    wrong, met = kill(RANDOM_KILLS, shape, SEED)
    assert not wrong, f"seed {SEED}: " + "\n".join(wrong)
    assert any("part" in state or "moved" in state for state in met), f"seed {SEED}: met only {met}"


def check(results):
    defects = [f"{fault}: {found}" for fault, found in results if found]
    assert not defects, f"seed {SEED}: " + "\n".join(defects)
