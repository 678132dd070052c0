"""The programs that ask the core."""

import os
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parents[2]


def driver(name: str) -> Path:
    """Those of BRIMWICK_ORACLE_DRIVERS, or of the release build."""
    folder = os.environ.get("BRIMWICK_ORACLE_DRIVERS") or REPOSITORY / "build/release/tests"
    return Path(folder) / name
