"""How the cost of an index grows with the number of folders."""

import statistics
import subprocess

from .trees import kept_tree, work_folder
from .walking import walk_once

SIZES = (1_000, 3_000, 10_000, 30_000, 100_000, 300_000, 1_000_000, 3_000_000)


def measure_growth(rounds: int, largest: int) -> list:
    """For each size up to the largest, medians of seconds and processor seconds, peak and index memory. Trees that were
    not there before are deleted again."""
    points = []
    for size in (size for size in SIZES if size <= largest):
        existed = (work_folder() / f"tree-{size}").exists()
        tree = kept_tree(size)
        walk_once(tree)
        walks = [walk_once(tree) for _ in range(rounds)]
        points.append({key: statistics.median(walk[key] for walk in walks) for key in walks[0]})
        print(f"{size:>9,} folders: {points[-1]['seconds']:.3f} s", flush=True)
        if not existed:
            subprocess.run(["rm", "-rf", tree], check=True)
    return points
