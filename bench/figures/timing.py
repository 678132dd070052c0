"""Programs timed as whole processes, in rounds in which each has its turn, and the figures made of their times."""

import math
import os
import statistics
import subprocess
import time
from dataclasses import dataclass

MOST_READ = 16_000_000
ATTEMPTS = 4


class CannotMeasure(RuntimeError):
    """A figure could not be taken; the text says why."""


@dataclass(frozen=True)
class Run:
    """From the start of a process to its end."""

    seconds: float
    processor_seconds: float
    # From the disk.
    read_bytes: int


def run_timed(command, stdin=None) -> Run:
    """Runs a program whose output nobody needs; `stdin` is a file to read from."""
    with open(stdin or os.devnull, "rb") as given:
        start = time.perf_counter()
        process = subprocess.Popen(command, stdin=given, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        complaints = process.stderr.read()
        _, status, used = os.wait4(process.pid, 0)
        seconds = time.perf_counter() - start
    process.stderr.close()
    process.returncode = os.waitstatus_to_exitcode(status)
    # Of the programs that search, some end with 1 when there is nothing to find.
    if process.returncode not in (0, 1):
        raise CannotMeasure(f"{command[0]} ended with {process.returncode}: {complaints.decode(errors='replace')}")
    return Run(seconds, used.ru_utime + used.ru_stime, used.ru_inblock * 512)


def run_warm(contestant) -> Run:
    """A run that found nearly all it reads in memory: one that did not has filled the caches, and is repeated. Gives
    up after some; then what was read tells."""
    for _ in range(ATTEMPTS):
        run = contestant()
        if run.read_bytes <= MOST_READ:
            break
    return run


def paired_rounds(contestants: dict, rounds: int) -> dict:
    """Times each of {name: function that returns a Run} once a round, in turns that shift by one every round, so that
    a slow moment of the machine meets all of them alike. A first run of each, to warm up, does not count. Returns
    {name: [Run]}."""
    for contestant in contestants.values():
        contestant()
    names = list(contestants)
    runs = {name: [] for name in names}
    for number in range(rounds):
        shift = number % len(names)
        for name in names[shift:] + names[:shift]:
            runs[name].append(run_warm(contestants[name]))
    return runs


def percentile(values, share) -> float:
    """The smallest of the values that at least this share of them, such as 0.95, does not exceed."""
    return sorted(values)[math.ceil(share * len(values)) - 1]


def median_seconds(runs) -> float:
    return statistics.median(run.seconds for run in runs)


def median_read_bytes(runs) -> float:
    return statistics.median(run.read_bytes for run in runs)


def median_processor_seconds(runs) -> float:
    return statistics.median(run.processor_seconds for run in runs)
