"""The figures that have a limit."""

import math
from dataclasses import dataclass

WALK_RATIO = 0.40
QUERY_MILLISECONDS = 5.0
COUNTING_PASSES = 4.0
BYTES_PER_FOLDER = 48
MEGABYTES = 200
KEY_PRESS_MILLISECONDS = 16
IDLE_TICKS = 0
NEW_FOLDER_MILLISECONDS = 100


@dataclass(frozen=True)
class Figure:
    """What was measured against what it may be; a figure without a value was not taken."""

    name: str
    value: float | None
    limit: float
    unit: str
    form: str = ".2f"

    @property
    def verdict(self) -> str:
        if self.value is None:
            return "not taken"
        return "holds" if self.value <= self.limit else "FAILS"

    def row(self) -> list:
        return [self.name, self._text(self.value), self._text(self.limit), self.verdict]

    def _text(self, value) -> str:
        if value is None:
            return ""
        return "never" if math.isinf(value) else f"{value:{self.form}} {self.unit}".strip()


def figures_of(results: dict) -> list:
    """The judged figures of what has been measured so far."""
    figures = []
    if walk := results.get("walk"):
        size = f"{walk['folders']:,} folders"
        figures += [
            Figure(f"{size} indexed, of the time of the faster of bfs and fd -j2", walk["ratio"], WALK_RATIO, ""),
            Figure("index memory per folder, besides its name, kept twice", walk["bytes_per_folder"],
                   BYTES_PER_FOLDER, "bytes", ".1f"),
        ]  # fmt: skip
    if search := results.get("search"):
        slowest = search["slowest_microseconds"]
        figures += [
            Figure("the slowest query, p99", slowest / 1000, QUERY_MILLISECONDS, "ms"),
            Figure("the same in counting passes over the names", slowest / search["counting_microseconds"],
                   COUNTING_PASSES, "", ".1f"),
        ]  # fmt: skip
    if running := results.get("running"):
        size = f"{running['folders']:,} folders"
        figures += [
            Figure(f"key press to painted rows, {size}, p95", running["key_press_milliseconds"]["p95"],
                   KEY_PRESS_MILLISECONDS, "ms", ".1f"),
            Figure("the same while the watches are set", running["early_key_press_milliseconds"]["p95"],
                   KEY_PRESS_MILLISECONDS, "ms", ".1f"),
            Figure(f"peak memory of the program, {size}", running["peak_bytes"] / 1e6, MEGABYTES, "MB", ".0f"),
            Figure(f"processor ticks in 10 idle seconds, {size}", running.get("idle_ticks"), IDLE_TICKS, "", ".0f"),
            new_folder_figure(running, running.get("walk_milliseconds", 0)),
        ]  # fmt: skip
    if transfer := results.get("transfer"):
        figures += [
            Figure(f"{case['name']}, of the time of {case['rival']}", case["ratio"], case["limit"], "")
            for case in transfer["cases"]
        ]
    if small := results.get("running_small"):
        figures.append(new_folder_figure(small, 0))
    return figures


def new_folder_figure(running: dict, walk_milliseconds: float) -> Figure:
    """One walk and a little: at a thousand folders the walk takes next to nothing."""
    limit = walk_milliseconds + NEW_FOLDER_MILLISECONDS
    name = f"new folder to row in the picker, {running['folders']:,} folders"
    return Figure(name, running.get("new_folder_milliseconds"), limit, "ms", ".0f")
