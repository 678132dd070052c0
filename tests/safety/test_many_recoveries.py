"""What a move of many files left when it was killed: the next start puts it right quickly."""

import subprocess
import tempfile
from pathlib import Path

import pytest

from faults import AS_USER, Fault, run_with
from scenarios import Scenario
from sweep import ground
from world import give, make_file

FILES = 200
FLUSHES = ("fsync", "fdatasync", "syncfs", "sync")


@pytest.fixture
def here():
    with tempfile.TemporaryDirectory(prefix="brimwick-safety-") as base:
        Path(base).chmod(0o755)
        with ground(True, Path(base) / "ground") as crossing, crossing.world(Scenario("move", True, "file")) as world:
            for number in range(FILES):
                make_file(world.source / f"{number}", f"content of {number}".encode())
            give(world.source)
            yield crossing.driver, world


def test_what_a_killed_move_of_many_files_left_is_flushed_together(here):
    driver, world = here
    names = [f"{number}" for number in range(FILES)]
    command = [driver, "--home", world.home]
    # All copies have their names by then, and all sources but the first two.
    kill = Fault("unlinkat", 2, "KILL")
    assert run_with(kill, [*command, "move", world.target, *(world.source / name for name in names)], None).met
    assert all((world.target / name).exists() for name in names)
    assert sum((world.source / name).exists() for name in names) >= FILES - 3

    log = world.home / "flushes"
    traced = ["strace", "-f", "-qq", "-e", "trace=" + ",".join(FLUSHES), "-o", log, *command, "recover"]
    subprocess.run(traced, check=True, capture_output=True, timeout=60, **AS_USER)
    calls = log.read_text().splitlines()
    assert len(calls) < FILES // 4, f"{len(calls)} flushes, the first: {calls[:8]}"
    assert world.hidden() == []
    lying = {path.name: path.read_bytes() for path in world.target.iterdir() if path.name in names}
    lying.update((path.name, path.read_bytes()) for path in world.source.iterdir() if path.name in names)
    assert lying == {name: f"content of {name}".encode() for name in names}
    assert len(list(world.source.iterdir())) + len(list(world.target.iterdir())) == FILES + 3
