"""How long it takes to find the names with a text in them."""

import json
import subprocess
from pathlib import Path

from .programs import NameSearchers
from .timing import median_seconds, paired_rounds, run_timed
from .walking import BENCH

# From what is in nearly every name to what is in none; with marks, capitals, other scripts, a phrase.
QUERIES = (
    "e", "re", "a", "s", "2", "sto", "records", "ISTANBUL", "mémoire", "memoire", "straße", "φωτο", "книг", "映画",
    "문", "पु", "opera 19", "museum valley", "no such folder", "qx",
)  # fmt: skip
# Whole processes are slow: a few of the queries tell enough about them.
ALSO_ASKED_OF_OTHERS = ("e", "re", "records", "memoire", "no such folder")


def measure_searches(tree: Path, paths_file: Path, work_folder: Path, rounds: int) -> dict:
    queries_file = work_folder / "queries.txt"
    queries_file.write_text("".join(f"{text}\n" for text in QUERIES))
    lines = subprocess.run([BENCH, "search", tree, "--queries", queries_file], check=True, capture_output=True)
    *queries, summary = [json.loads(line) for line in lines.stdout.splitlines()]

    searchers = NameSearchers(paths_file, work_folder)
    others = {}
    for text in ALSO_ASKED_OF_OTHERS:
        commands = searchers.commands(text)
        contestants = {name: lambda command=command: run_timed(*command) for name, command in commands.items()}
        runs = paired_rounds(contestants, rounds)
        others[text] = {name: median_seconds(of_one) * 1e6 for name, of_one in runs.items()}
    return {
        "queries": queries,
        "others": others,
        "bytes": summary["bytes"],
        "repeats": summary["repeats"],
        "counting_microseconds": summary["counting_microseconds"]["median"],
        "slowest_microseconds": max(query["microseconds"]["p99"] for query in queries),
    }
