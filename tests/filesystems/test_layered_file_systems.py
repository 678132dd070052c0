"""Overlays and FUSE mounts, which report link counts of every kind: the index is what a naive walk finds."""

import os
import shutil
import sys
from pathlib import Path

import pytest

from oracle import check_index
from tree import TreeMaker

PASSTHROUGH = Path(__file__).with_name("passthrough.py")


@pytest.fixture(params=["tmpfs", "ext4"])
def layers(request, mounts):
    """Where the layers of an overlay lie."""
    if request.param == "tmpfs":
        return mounts, mounts.tmpfs("layers")
    return mounts, mounts.image("ext4", ["mkfs.ext4", "-q", "-F"], "e2fsprogs", "256M", "layers")


def _make_lowers(path):
    """Two lower layers that share folders of the same name."""
    lowers = [path / "lower 1", path / "lower 2"]
    for seed, lower in enumerate(lowers):
        lower.mkdir()
        TreeMaker(lower, seed).fill(120)
        for name in ("shared/of both", f"shared/of {seed} alone", "removed/below", "replaced/old", f"own of {seed}/x"):
            (lower / name).mkdir(parents=True)
    return lowers


@pytest.mark.parametrize("seed", [1, 2])
def test_overlay(layers, seed):
    mounts, path = layers
    merged = mounts.overlay(path, _make_lowers(path))
    check_index(merged, at_least=200)

    (merged / "shared/of the upper one/below").mkdir(parents=True)
    (merged / "new/below/.hidden").mkdir(parents=True)
    shutil.rmtree(merged / "removed")
    shutil.rmtree(merged / "replaced")
    (merged / "replaced/new").mkdir(parents=True)
    shutil.rmtree(merged / "shared/of both")
    (merged / "own of 0/x").rmdir()
    TreeMaker(merged, seed).fill(60)
    found = check_index(merged, at_least=240)
    assert os.fsencode(merged / "replaced/new") in found
    assert os.fsencode(merged / "replaced/old") not in found
    assert os.fsencode(merged / "removed") not in found


def test_overlay_that_is_mounted_inside_a_tree(mounts):
    path = mounts.tmpfs("outer")
    TreeMaker(path, 3).fill(40)
    merged = path / "merged"
    merged.mkdir()
    store = mounts.tmpfs("store")
    for name in ("lower/a/b", "upper/a/c", "work"):
        (store / name).mkdir(parents=True)
    options = f"lowerdir={store}/lower,upperdir={store}/upper,workdir={store}/work"
    mounts.mount("overlay", "overlay", merged, options)
    found = check_index(path, at_least=44)
    assert os.fsencode(merged / "a/b") in found and os.fsencode(merged / "a/c") in found


def test_bindfs(mounts, base):
    source, at = mounts.folder("source"), mounts.folder("bindfs")
    TreeMaker(source, 1).fill(200)
    mounts.by_program(["bindfs", "-f", source, at], "bindfs", at, base / "bindfs.log")
    check_index(at, at_least=200)
    TreeMaker(at, 2).fill(50)
    check_index(at, at_least=250)


def test_ntfs(mounts, base):
    """Folders have one link here."""
    if not shutil.which("ntfs-3g"):
        pytest.skip("ntfs-3g is missing: install ntfs-3g")
    image, at = base / "ntfs.image", mounts.folder("ntfs")
    os.truncate(os.open(image, os.O_CREAT | os.O_WRONLY, 0o600), 64 << 20)
    assert os.spawnlp(os.P_WAIT, "mkntfs", "mkntfs", "-qQF", str(image)) == 0
    mounts.by_program(["ntfs-3g", "-o", "no_detach", image, at], "ntfs-3g", at, base / "ntfs.log")
    TreeMaker(at, 1, any_bytes=False).fill(200)
    assert os.stat(at).st_nlink == 1
    check_index(at, at_least=200)


@pytest.mark.parametrize("types", ["with types", "without types"])
@pytest.mark.parametrize("links", ["true", "0", "1", "2", "3", "1000"])
def test_any_link_count_that_fuse_may_report(mounts, base, links, types):
    pytest.importorskip("fusepy", reason="fusepy is missing: install python3-fusepy")
    source, at = mounts.folder("source"), mounts.folder("fuse")
    TreeMaker(source, 1).fill(200)
    (source / "folders only").mkdir()
    for number in range(30):
        (source / f"folders only/{number}").mkdir()
    command = [sys.executable, PASSTHROUGH, source, at, "--links", links]
    command += ["--without-types"] if types == "without types" else []
    mounts.by_program(command, "python3-fusepy", at, base / "fuse.log")
    if links != "true":
        assert os.stat(at).st_nlink == int(links)
    check_index(at, at_least=230)


@pytest.mark.parametrize("kind", ["proc", "sysfs"])
def test_file_systems_of_the_kernel(mounts, kind):
    """Folders have one link here, or two, or as many as they please; only parts that stand still are compared."""
    at = mounts.mount(kind, kind, mounts.folder(kind))
    part = at / ("sys/net" if kind == "proc" else "module")
    if not part.is_dir():
        pytest.skip(f"this kernel has no {part.relative_to(at)} in {kind}")
    check_index(part)
