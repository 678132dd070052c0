"""Trees of folders to measure with."""

import os
import stat
import subprocess
import tempfile
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parents[2]


def work_folder() -> Path:
    """Where trees, databases and results are kept: build/bench, or, in a checkout that only its owner may enter, a
    folder that the ordinary user of the virtual desktop can reach too."""
    folder = REPOSITORY / "build/bench"
    if os.geteuid() == 0 and not all(above.stat().st_mode & stat.S_IXOTH for above in REPOSITORY.parents):
        folder = Path(tempfile.gettempdir()) / "brimwick-bench"
    folder.mkdir(parents=True, exist_ok=True)
    return folder


def tree_of(folders: int) -> Path:
    """A tree with this many folders below it: that of BRIMWICK_BENCH_TREE, whatever it holds, or one in the work
    folder; made if it is missing."""
    given = os.environ.get("BRIMWICK_BENCH_TREE")
    if given:
        tree = Path(given).resolve()
        if not tree.exists():
            make_tree(tree, folders)
        return tree
    return kept_tree(folders)


def kept_tree(folders: int) -> Path:
    """The tree of this size in the work folder."""
    tree = work_folder() / f"tree-{folders}"
    if not tree.exists():
        make_tree(tree, folders)
    return tree


def make_tree(tree: Path, folders: int):
    print(f"Making a tree of {folders:,} folders", flush=True)
    # Under its final name once it is whole.
    unfinished = tree.with_name(tree.name + ".unfinished")
    subprocess.run(["rm", "-rf", unfinished], check=True)
    maker = [REPOSITORY / "bench/make-tree", unfinished, "--folders", str(folders)]
    subprocess.run(maker, check=True, stdout=subprocess.DEVNULL)
    os.sync()
    unfinished.rename(tree)
