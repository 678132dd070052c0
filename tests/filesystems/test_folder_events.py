"""The folder events on file systems of many kinds: their own tests, with the temporary folders there."""

import os
import subprocess

import pytest

PROGRAM = os.environ["FOLDER_EVENT_TESTS"]
# The FUSE program hands whole paths on, and these must not be longer.
LEFT_OUT = {"bindfs": "*BeyondTheLongestPath"}


@pytest.fixture(params=["tmpfs", "ext4", "btrfs", "xfs", "overlay", "bindfs"])
def file_system(request, mounts, base):
    """An empty file system that everyone may enter."""
    # The tests become an ordinary user now and then.
    base.chmod(0o711)
    if request.param == "tmpfs":
        return mounts.tmpfs()
    if request.param == "overlay":
        store = mounts.tmpfs("store")
        (store / "lower").mkdir()
        return mounts.overlay(store, [store / "lower"])
    if request.param == "bindfs":
        source, at = mounts.folder("source"), mounts.folder("bindfs")
        return mounts.by_program(["bindfs", "-f", source, at], "bindfs", at, base / "bindfs.log")
    makers = {
        "ext4": (["mkfs.ext4", "-q", "-F"], "e2fsprogs"),
        "btrfs": (["mkfs.btrfs", "-q", "-f"], "btrfs-progs"),
        "xfs": (["mkfs.xfs", "-q"], "xfsprogs"),
    }
    return mounts.image(request.param, *makers[request.param], "512M")


def test_folder_events(file_system):
    command = [PROGRAM, "--gtest_brief=1", f"--gtest_filter=-{LEFT_OUT.get(file_system.name, '')}"]
    environment = {**os.environ, "TMPDIR": os.fspath(file_system)}
    done = subprocess.run(command, env=environment, capture_output=True, text=True, errors="replace")
    assert done.returncode == 0, done.stdout[-6000:] + done.stderr[-2000:]
