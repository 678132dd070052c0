"""Mounts of each test's own, below a temporary folder."""

import tempfile
from pathlib import Path

import pytest

from mounts import Mounts


@pytest.fixture
def base():
    with tempfile.TemporaryDirectory(prefix="brimwick-filesystems-") as folder:
        yield Path(folder)


@pytest.fixture
def mounts(base):
    with Mounts(base) as mounts:
        yield mounts
