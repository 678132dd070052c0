"""ext4, btrfs, tmpfs and wherever temporary files lie: the index is what a naive walk finds, in the same order."""

import os
import subprocess

import pytest

from oracle import check_index
from tree import TreeMaker

SEEDS = [1, 2]
EXT4 = ["mkfs.ext4", "-q", "-F", "-b", "1024", "-I", "128", "-N", "150000"]
BTRFS = ["mkfs.btrfs", "-q", "-f"]


@pytest.fixture(params=["temporary folder", "tmpfs", "ext4", "ext4 without types", "btrfs", "xfs"])
def file_system(request, base):
    """An empty file system."""
    if request.param == "temporary folder":
        yield base
        return
    mounts = request.getfixturevalue("mounts")
    if request.param == "tmpfs":
        yield mounts.tmpfs()
    elif request.param == "btrfs":
        yield mounts.image("btrfs", BTRFS, "btrfs-progs", "512M")
    elif request.param == "xfs":
        yield mounts.image("xfs", ["mkfs.xfs", "-q"], "xfsprogs", "512M")
    else:
        features = ["-O", "^filetype"] if "without" in request.param else []
        yield mounts.image("ext4", [*EXT4, *features], "e2fsprogs", "1G")


@pytest.mark.parametrize("seed", SEEDS)
def test_random_tree(file_system, seed):
    TreeMaker(file_system, seed).fill(400)
    check_index(file_system, at_least=400)


@pytest.mark.parametrize("seed", SEEDS)
def test_tree_that_was_changed_a_lot(file_system, seed):
    TreeMaker(file_system, seed).fill(300).churn(250).fill(100)
    check_index(file_system, at_least=100)


def test_one_subfolder_among_many_files(file_system):
    """Wherever in the listing it comes; and none at all."""
    path = file_system
    for holder in (b"first", b"middle", b"last", b"none"):
        folder = os.fsencode(path) + b"/" + holder
        os.mkdir(folder)
        for number in range(3000):
            if (holder, number) in ((b"first", 0), (b"middle", 1500)):
                os.makedirs(folder + b"/only/below")
            with open(folder + b"/file %d" % number, "wb"):
                pass
    os.makedirs(os.fsencode(path) + b"/last/only/below")
    assert len(check_index(path)) == (11 if not (path / "lost+found").exists() else 12)


def test_folders_that_hold_only_what_is_left_out(file_system):
    path = file_system
    for name in ("dots/.a/b", "dots/.b", "bundles/A.app/Contents", "bundles/B.framework", "both/.a", "both/C.pkg/D"):
        (path / name).mkdir(parents=True)
    (path / "mixed").mkdir()
    for number in range(200):
        (path / f"mixed/.dot {number}").mkdir()
        (path / f"mixed/Tool {number}.app/Contents").mkdir(parents=True)
        (path / f"mixed/plain {number}/below").mkdir(parents=True)
    (path / "links").mkdir()
    for number in range(50):
        (path / f"links/{number}").symlink_to(path / "mixed")
    check_index(path, at_least=400)


def test_folder_that_cannot_be_read(file_system):
    path = file_system
    for name in ("open/inner", "closed/inner", "after"):
        (path / name).mkdir(parents=True)
    (path / "closed").chmod(0)
    # For root it can be read all the same, and the oracle knows that.
    check_index(path)


def test_two_roots_one_inside_the_other(file_system):
    path = file_system
    TreeMaker(path, 5).fill(60)
    (path / "Zoo of one's own/below").mkdir(parents=True)
    check_index(path, path / "Zoo of one's own", path)


@pytest.mark.parametrize("file_system", ["ext4", "tmpfs", "btrfs"], indirect=True)
def test_more_subfolders_than_a_link_count_holds(file_system):
    """From 65,000 on ext4 no longer counts, not even when there are fewer again."""
    path = file_system
    crowd = os.fsencode(path) + b"/crowd"
    os.mkdir(crowd)
    for number in range(66000):
        os.mkdir(crowd + b"/%d" % number)
    for number in range(0, 66000, 6600):
        os.mkdir(crowd + b"/%d/below" % number)
    check_index(path, at_least=66010)
    for number in range(66000):
        if number % 6600:
            os.rmdir(crowd + b"/%d" % number)
    check_index(path, at_least=20)


def test_mount_points_inside(mounts):
    """What is mounted on a folder belongs to the tree, whatever it hides."""
    path = mounts.image("ext4", EXT4, "e2fsprogs", "256M")
    TreeMaker(path, 8).fill(50)
    (path / "mounted/hidden/away").mkdir(parents=True)
    (path / "empty").mkdir()
    (path / ".dot/mounted").mkdir(parents=True)
    (path / "Mount.app").mkdir()
    for place in ("mounted", "empty", ".dot/mounted", "Mount.app"):
        inner = mounts.mount("tmpfs", "tmpfs", path / place)
        if place != "empty":
            TreeMaker(inner, 9).fill(20)
    subprocess.run(["mount", "--bind", path / "mounted", path / "empty"], check=True)
    try:
        check_index(path, at_least=90)
    finally:
        subprocess.run(["umount", path / "empty"], check=True)


def test_btrfs_subvolumes_and_snapshots(mounts):
    path = mounts.image("btrfs", BTRFS, "btrfs-progs", "512M")
    TreeMaker(path, 4).fill(50)

    def btrfs(*arguments):
        subprocess.run(["btrfs", "subvolume", *arguments], check=True, capture_output=True)

    btrfs("create", path / "volume")
    TreeMaker(path / "volume", 6).fill(80)
    btrfs("create", path / "volume/nested")
    TreeMaker(path / "volume/nested", 7).fill(20)
    btrfs("create", path / ".hidden volume")
    (path / ".hidden volume/inner").mkdir()
    # In a snapshot a subvolume is an empty folder of another kind.
    btrfs("snapshot", path / "volume", path / "snapshot")
    btrfs("snapshot", "-r", path / "volume", path / "read-only snapshot")
    found = check_index(path, at_least=300)
    assert os.fsencode(path / "snapshot/nested") in found
    assert not any(folder.startswith(os.fsencode(path / "snapshot/nested") + b"/") for folder in found)
