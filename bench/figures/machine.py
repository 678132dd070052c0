"""The machine that the figures were taken on, without anything that would tell which one it is."""

import os
import platform
import re
import subprocess
from pathlib import Path


def file_system(folder: Path) -> str:
    """The kind of it, such as "ext4"."""
    mounts = subprocess.run(
        ["findmnt", "-n", "-o", "FSTYPE", "-T", folder], check=True, capture_output=True, text=True
    ).stdout.split()
    # What was mounted last lies over the others.
    return mounts[-1]


def describe(folder: Path) -> str:
    """In one sentence; the file system is that of the folder."""
    kind = file_system(folder)
    model = re.search(r"^model name\s*:\s*(.*)$", Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    kernel = ".".join(platform.release().split(".")[:2])
    memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") / 2**30
    cores = len(os.sched_getaffinity(0))
    processor = model.group(1).strip() if model else platform.machine()
    virtual = " (virtual)" if "hypervisor" in Path("/proc/cpuinfo").read_text() else ""
    return (
        f"{cores} cores{virtual} of {processor}, {memory:.0f} GiB of memory, Linux {kernel}, {kind}, warm caches"
    )
