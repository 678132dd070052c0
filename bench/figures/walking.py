"""How long it takes until the folders of a tree are known."""

import json
import subprocess
from pathlib import Path

from .programs import folder_listers
from .timing import (
    CannotMeasure,
    median_processor_seconds,
    median_read_bytes,
    median_seconds,
    paired_rounds,
    run_timed,
)
from .trees import REPOSITORY

BENCH = REPOSITORY / "build/release/bench/brimwick-bench"
OURS = "Brimwick"
RIVALS = ("bfs", "fd -j2")


def walk_once(tree: Path) -> dict:
    """What brimwick-bench tells of one walk."""
    return json.loads(subprocess.run([BENCH, "walk", tree], check=True, capture_output=True).stdout)


def list_folders(tree: Path, paths_file: Path) -> int:
    """Has every program list the folders, checks that all find as many, and returns how many there are below the
    tree; their paths are in `paths_file` then. Fills the caches, too."""
    counts = {OURS: walk_once(tree)["folders"] - 1}
    for name, command in folder_listers(tree).items():
        with open(paths_file, "wb") as out:
            subprocess.run(command, check=True, stdout=out)
        with open(paths_file, "rb") as paths:
            counts[name] = sum(1 for _ in paths)
    if len(set(counts.values())) != 1:
        raise CannotMeasure(f"the programs do not find the same folders: {counts}")
    return counts[OURS]


def measure_walks(tree: Path, folders: int, rounds: int) -> dict:
    commands = {OURS: [str(BENCH), "walk", str(tree)], **folder_listers(tree)}
    contestants = {name: lambda command=command: run_timed(command) for name, command in commands.items()}
    runs = paired_rounds(contestants, rounds)
    medians = {name: median_seconds(of_one) for name, of_one in runs.items()}
    return {
        "folders": folders,
        "rounds": rounds,
        "seconds": medians,
        "processor_seconds": {name: median_processor_seconds(of_one) for name, of_one in runs.items()},
        "read_bytes": {name: median_read_bytes(of_one) for name, of_one in runs.items()},
        "ratio": medians[OURS] / min(medians[rival] for rival in RIVALS),
        "bytes_per_folder": walk_once(tree)["bytes_per_folder"],
    }
