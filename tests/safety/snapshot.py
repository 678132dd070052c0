"""What a file or a folder tree is: everything that a move or a copy must keep."""

import hashlib
import os
import stat
from pathlib import Path


def snapshot(path: Path) -> tuple:
    """The same for two items exactly when one is a true copy of the other, whatever their names."""
    names_of_file = {}
    return _entry(path, "", names_of_file)


def _entry(path: Path, relative: str, names_of_file: dict) -> tuple:
    status = path.lstat()
    kind = stat.S_IFMT(status.st_mode)
    common = (kind, stat.S_IMODE(status.st_mode), status.st_uid, status.st_gid)
    if stat.S_ISLNK(status.st_mode):
        return (kind, os.readlink(path), status.st_mtime_ns)
    attributes = tuple((name, os.getxattr(path, name)) for name in sorted(os.listxattr(path)) if _is_kept(name))
    if stat.S_ISDIR(status.st_mode):
        inside = tuple(
            (name, _entry(path / name, f"{relative}/{name}", names_of_file)) for name in sorted(os.listdir(path))
        )
        return (*common, status.st_mtime_ns, attributes, inside)
    # Files with several names in the tree are told apart from copies of each other.
    first_name = names_of_file.setdefault((status.st_dev, status.st_ino), relative)
    content = hashlib.sha256(path.read_bytes()).digest() if stat.S_ISREG(status.st_mode) else b""
    return (*common, status.st_mtime_ns, attributes, first_name, status.st_size, content)


def _is_kept(attribute: str) -> bool:
    return attribute.startswith(("user.", "system.posix_acl_"))


def is_remainder(part: tuple, whole: tuple) -> bool:
    """Whether one entry is the other, or, of folders, what is left of it after some of its entries were removed."""
    if part[0] != whole[0]:
        return False
    if part[0] == stat.S_IFDIR:
        entries = dict(whole[-1])
        return all(name in entries and is_remainder(entry, entries[name]) for name, entry in part[-1])
    if part[0] == stat.S_IFLNK:
        return part == whole
    # By which of its names a file is known changes when one of them goes.
    return (*part[:-3], *part[-2:]) == (*whole[:-3], *whole[-2:])
