"""Windows timed from outside, from a key until they are painted and have the focus."""

import statistics
import sys
import time

from figures.timing import percentile

RUNS = 30
WARM_UP = 3


def time_appearances(appear) -> list:
    """Milliseconds of each run but the first ones; `appear` brings the window once and returns the seconds it took."""
    return [1000 * appear() for _ in range(WARM_UP + RUNS)][WARM_UP:]


def seconds_until_it_appears(watch, act) -> float:
    """From the end of `act` until the watched window is painted and has the focus."""
    watch.forget()
    begin = time.monotonic()
    act()
    return max(watch.wait()) - begin


def report(name: str, times: list):
    median, p95 = statistics.median(times), percentile(times, 0.95)
    print(f"{name:<44} median {median:6.1f} ms   p95 {p95:6.1f} ms   ({len(times)} runs)", flush=True)


def run_measurement(name: str, measure) -> int:
    """The exit status of a program that measures; what hinders is told in one line."""
    try:
        measure()
    except (AssertionError, RuntimeError, OSError) as error:
        print(f"{name}: {error}", file=sys.stderr)
        return 1
    return 0
