"""The program's walk against a slow and plain one, over random trees on disk."""

import os
import shutil
import subprocess
import tempfile
from contextlib import contextmanager
from pathlib import Path

import pytest

from drivers import driver
from random_trees import RandomTree
from slow_walk import walk

TREES = int(os.environ.get("BRIMWICK_ORACLE_TREES", "40"))
FOLDERS = 120
ROOT = os.geteuid() == 0
NOBODY = 65534


@pytest.fixture
def place():
    """A folder that an ordinary user may read, and the program in it: as root, nothing would be unreadable."""
    with tempfile.TemporaryDirectory(prefix="brimwick-oracle-") as folder:
        shutil.copy(driver("folder_lister"), folder)
        os.mkdir(f"{folder}/top")
        for path in (folder, f"{folder}/top"):
            os.chmod(path, 0o755)
        yield Path(folder)


@pytest.fixture
def top(place):
    return os.fsencode(place / "top")


def program_walk(place, roots) -> list:
    user = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if ROOT else {}
    command = [place / "folder_lister", *roots]
    done = subprocess.run(command, check=True, stdout=subprocess.PIPE, cwd="/", timeout=60, **user)
    return done.stdout.split(b"\0")[:-1]


@contextmanager
def ordinary_user():
    if ROOT:
        os.seteuid(NOBODY)
    try:
        yield
    finally:
        if ROOT:
            os.seteuid(0)


def plain_walk(roots) -> list:
    with ordinary_user():
        return [path for root in roots for path in walk(root)]


def assert_same(place, roots):
    found, expected = program_walk(place, roots), plain_walk(roots)
    assert sorted(found) == sorted(expected)
    assert found == expected, "the same folders in another order"


@contextmanager
def random_tree(seed, top, folders=FOLDERS):
    tree = RandomTree(seed, top)
    try:
        tree.make(folders)
        yield tree
    finally:
        tree.open_again()


@pytest.mark.parametrize("seed", range(TREES))
def test_finds_the_folders_that_a_plain_walk_finds_in_the_same_order(place, top, seed):
    with random_tree(seed, top) as tree:
        assert_same(place, [top, *tree.some_folders(3)])


def test_finds_many_folders_in_one_in_the_order_of_the_listing(place, top):
    for number in range(5000):
        os.mkdir(os.path.join(top, b"folder %d" % number))
    assert_same(place, [top])


def test_walks_roots_that_are_missing_links_or_no_folders(place, top):
    with random_tree(1, top):
        os.symlink(top, os.path.join(top, b"link"))
        os.mknod(os.path.join(top, b"file"))
        assert_same(place, [os.path.join(top, name) for name in (b"missing", b"link", b"file")])


@contextmanager
def mounted(folder, *arguments):
    command = ["mount", *arguments, folder]
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode:
        pytest.skip(f"mounting needs more rights than these tests have: {done.stderr.strip()}")
    try:
        yield
    finally:
        subprocess.run(["umount", folder], check=True)


def test_walks_into_what_is_mounted(place, top):
    with random_tree(2, top):
        inner = os.path.join(top, b"plain mount")
        os.mkdir(inner)
        with mounted(inner, "-t", "tmpfs", "tmpfs"):
            os.chmod(inner, 0o755)
            with random_tree(3, inner):
                assert_same(place, [top, inner])


def test_walks_a_folder_that_is_mounted_within_itself(place, top):
    with random_tree(4, top):
        inner = os.path.join(top, b"again")
        os.mkdir(inner)
        with mounted(inner, "--bind", top):
            assert_same(place, [top])


def test_walks_a_folder_over_which_an_unreadable_one_is_mounted(place, top):
    outer = os.path.join(top, b"covered")
    os.makedirs(os.path.join(outer, b"below"))
    with mounted(outer, "-t", "tmpfs", "-o", "mode=0700", "tmpfs"):
        os.mkdir(os.path.join(outer, b"private"))
        assert_same(place, [top])
