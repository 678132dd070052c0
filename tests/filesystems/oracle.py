"""The folders that an index must hold, found the slow and obvious way; and what the program finds."""

import os
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "oracle"))

from slow_walk import walk as naive_walk  # noqa: E402


def indexed(*roots) -> list:
    """The folders of the program's index, in its order."""
    return _paths([os.environ["FOLDER_LISTER"], *roots])


def searched(text: str, root) -> list:
    """What the installed program finds."""
    return _paths([os.environ["BRIMWICK_BINARY"], "search", text, "-0", "--in", root])


def naive_search(text: str, folders: list) -> list:
    """Of a walk the folders whose name contains an ASCII text, by name, equal names in their order."""
    wanted = text.lower().encode()
    found = [path for path in folders if wanted in os.path.basename(path).lower()]
    return sorted(found, key=os.path.basename)


def _paths(command) -> list:
    done = subprocess.run(command, capture_output=True)
    complaint = done.stderr.decode(errors="replace")
    assert done.returncode == 0 or "No folders found." in complaint, f"ended with {done.returncode}: {complaint}"
    return done.stdout.split(b"\0")[:-1]


def check_index(*roots, at_least=2):
    """The index and a search over it are those of the naive walk."""
    expected = [path for root in roots for path in naive_walk(root)]
    assert len(expected) >= at_least, "the tree is too small to prove anything"
    _check_equal(indexed(*roots), expected)
    for root in roots:
        walked = naive_walk(root)
        _check_equal(searched("o", root), naive_search("o", walked))
    return expected


def _check_equal(found, expected):
    missing, surplus = set(expected) - set(found), set(found) - set(expected)
    assert not missing and not surplus, f"missing {sorted(missing)[:5]}, surplus {sorted(surplus)[:5]}"
    assert found == expected, "the order differs"
