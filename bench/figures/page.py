"""docs/performance.md, from what has been measured."""

import math

from . import tables
from .plot import growth_plot
from .trees import REPOSITORY

PAGE = REPOSITORY / "docs/performance.md"
PLOT = REPOSITORY / "docs/performance-growth.svg"


def write_page(results: dict):
    sections = [opening(results)]
    for key, section in (("walk", walk_section), ("search", search_section), ("running", running_section),
                         ("transfer", transfer_section)):
        if key in results:
            sections.append(section(results))
    if "growth" in results:
        PLOT.write_text(growth_plot(results["growth"]))
        sections.append(growth_section(results))
    PAGE.write_text("\n\n".join(sections) + "\n")


def opening(results) -> str:
    return f"""# Performance

Written by `bench/compare`, which makes the folders, takes the figures and judges them; `bench/compare --growth` adds
the growth. Taken on: {results["machine"]}.

{tables.markdown(*tables.judged(results))}"""


def walk_section(results) -> str:
    walk = results["walk"]
    return f"""## Knowing all folders

Whole processes over a tree of {walk["folders"]:,} folders, in {walk["rounds"]} rounds in which each has its turn; medians.
Brimwick has an index ready for searching at the end, the others have printed the paths of the same folders.

{tables.markdown(*tables.walks(walk))}"""


def search_section(results) -> str:
    search = results["search"]
    return f"""## Finding a name

Brimwick searches its index at every key, {search["repeats"]} times for each query here, and has the hits in order of their
names; the others are whole processes over the same names, medians of the rounds. ripgrep and plocate do not look
through accents. Counting how often one byte occurs in the same {search["bytes"] / 1e6:.1f} MB takes
{search["counting_microseconds"] / 1000:.2f} ms.

{tables.markdown(*tables.searches(search))}"""


def running_section(results) -> str:
    running, small = results["running"], results.get("running_small")
    lines = [
        f"The installed program on a virtual desktop, its only indexed folder the tree of {running['folders']:,} folders. It",
        f"offered its picker {running['seconds_until_ready']:.1f} s after its start. Over {running['key_presses']} keys,"
        " typed and taken back, the",
        f"first rows looked as they stay {running['key_press_milliseconds']['median']:.1f} ms after the key (median),"
        f" {running['key_press_milliseconds']['p95']:.1f} ms at the 95th percentile.",
    ]
    if "idle_ticks" in running:
        lines.append(f"In {running['idle_seconds']:.0f} s of doing nothing it used {running['idle_ticks']} ticks of 10 ms.")
    else:
        lines.append("The system did not let it watch every folder, so that some figures were not taken.")
    for program in (running, small or {}):
        taken = program.get("new_folder_milliseconds")
        if taken is not None and math.isfinite(taken):
            lines.append(f"A folder made among {program['folders']:,} was in the list after {taken:.0f} ms (median).")
    return "## The running program\n\n" + "\n".join(lines)


def transfer_section(results) -> str:
    transfer = results["transfer"]
    return f"""## Moving and copying

Whole processes over small files on {transfer["disk"]}, in {transfer["rounds"]} rounds in which each has its turn; medians. What is moved to
another disk comes from {transfer["other"]}. Brimwick ends when all is safely on the disk; so the others are followed by a
flush of the target where it says so, which a move on one disk and gio are not.

{tables.markdown(*tables.transfers(transfer))}"""


def growth_section(results) -> str:
    return f"""## Growth

Walks of trees of different sizes, medians. Peak memory is that of the whole process that walks.

{tables.markdown(*tables.growth(results["growth"]))}

![Time and memory by the number of folders](performance-growth.svg)"""
