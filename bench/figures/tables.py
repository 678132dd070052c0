"""What was measured, as tables for the terminal and for a page."""

from .judging import figures_of
from .walking import OURS


def columns(rows, header) -> str:
    """For the terminal: the first column to the left, the others to the right."""
    widths = [max(len(row[column]) for row in [header, *rows]) for column in range(len(header))]
    lines = []
    for row in [header, *rows]:
        cells = [row[0].ljust(widths[0])] + [cell.rjust(width) for cell, width in zip(row[1:], widths[1:])]
        lines.append("   ".join(cells).rstrip())
    return "\n".join(lines)


def markdown(rows, header) -> str:
    rules = ["---"] + ["--:"] * (len(header) - 1)
    return "\n".join("| " + " | ".join(row) + " |" for row in [header, rules, *rows])


def judged(results):
    return [figure.row() for figure in figures_of(results)], ["figure", "measured", "limit", "verdict"]


def unjudged(results):
    return [figure.row()[:2] for figure in figures_of(results)], ["figure", "measured"]


def walks(walk):
    best = min(walk["seconds"].values())
    rows = [
        [
            name,
            f"{seconds:.2f} s",
            f"{walk['processor_seconds'][name]:.2f} s",
            f"{walk['read_bytes'][name] / 1e6:.0f} MB",
            f"{seconds / best:.1f}",
        ]
        for name, seconds in sorted(walk["seconds"].items(), key=lambda item: item[1])
    ]
    return rows, ["program", "time", "processor time", "read from disk", "times the fastest"]


def searches(search):
    """All queries with our own times, and those of the others where they were asked."""
    others = list(next(iter(search["others"].values())))
    rows = []
    for query in search["queries"]:
        times = search["others"].get(query["text"], {})
        ours = [milliseconds(query["microseconds"][key]) for key in ("median", "p99")]
        theirs = [milliseconds(times[name]) if name in times else "" for name in others]
        rows.append([query["text"], f"{query['hits']:,}", *ours, *theirs])
    return rows, ["query", "hits", f"{OURS}, median", "p99", *others]


def transfers(transfer):
    others = list(dict.fromkeys(name for case in transfer["cases"] for name in case["seconds"]))
    rows = [
        [case["name"], *(f"{case['seconds'][name]:.3g} s" if name in case["seconds"] else "" for name in others)]
        for case in transfer["cases"]
    ]
    return rows, ["what", *others]


def milliseconds(microseconds) -> str:
    return f"{microseconds / 1000:.2f} ms" if microseconds < 100_000 else f"{microseconds / 1000:.0f} ms"


def growth(points):
    rows = [
        [
            f"{point['folders'] - 1:,.0f}",
            f"{point['seconds'] * 1000:,.1f} ms",
            f"{point['seconds'] / point['folders'] * 1e6:.2f} µs",
            f"{point['peak_bytes'] / 1e6:,.1f} MB",
            f"{point['bytes_per_folder']:.1f}",
            f"{point['name_bytes'] / point['folders']:.1f}",
        ]
        for point in points
    ]
    return rows, ["folders", "time", "per folder", "peak memory", "bytes per folder besides names", "bytes of name"]
