"""The little world of one run: folders to move between, the items, and what must not be touched."""

import contextlib
import itertools
import os
import shutil
from dataclasses import dataclass, field
from pathlib import Path

from snapshot import snapshot

HIDDEN = ".brimwick-"
# An ordinary one: to root nothing is ever denied.
USER = 12345
MOMENT_NS = 1_600_000_000_123_456_789
_moments = itertools.count(1)


@dataclass
class World:
    """`source`, `target` and `trash` hold items; `target` may lie on another file system."""

    source: Path
    target: Path
    home: Path
    items: list = field(default_factory=list)
    originals: dict = field(default_factory=dict)
    bystanders: dict = field(default_factory=dict)

    @property
    def trash(self) -> Path:
        return self.home / ".Trash"

    @property
    def folders(self) -> tuple:
        return (self.source, self.target, self.trash)

    def remember(self):
        """To be called once everything is in place: what lies there now is what must be kept, and is the user's."""
        for folder in (self.source, self.target, self.home):
            give(folder)
        self.originals = {item.name: snapshot(item) for item in self.items}
        self.bystanders = {
            path: snapshot(path)
            for folder in self.folders
            for path in sorted(folder.iterdir())
            if path not in self.items
        }

    def visible(self, folder: Path) -> list:
        return [path for path in sorted(folder.iterdir()) if not path.name.startswith(HIDDEN)]

    def hidden(self) -> list:
        return [path for folder in self.folders for path in folder.iterdir() if path.name.startswith(HIDDEN)]

    def remove(self):
        for folder in (self.source, self.target, self.home):
            _remove_tree(folder)


def _remove_tree(folder: Path):
    for path, folders, _ in os.walk(folder):
        for name in folders:
            if not os.path.islink(os.path.join(path, name)):
                os.chmod(os.path.join(path, name), 0o700)
    shutil.rmtree(folder)


def give(folder: Path):
    """Hands a folder with all that is in it to the user that the driver runs as."""
    for path in (folder, *folder.rglob("*")):
        os.chown(path, USER, USER, follow_symlinks=False)


def make_file(path: Path, content: bytes, mode: int = 0o644) -> Path:
    path.write_bytes(content)
    path.chmod(mode)
    _set_time(path)
    return path


def make_large_file(path: Path) -> Path:
    """Larger than any buffer, with a hole and an attribute."""
    with path.open("wb") as file:
        file.write(os.urandom(600_000))
        file.seek(2_000_000)
        file.write(b"after the hole")
    _set_attribute(path, b"blue")
    path.chmod(0o600)
    _set_time(path)
    return path


def make_link(path: Path, to: str) -> Path:
    path.symlink_to(to)
    _set_time(path)
    return path


def make_tree(path: Path) -> Path:
    """Folders, a read-only one among them, files, two names of one file, a link, names that are no text."""
    (path / "deep" / "deeper").mkdir(parents=True)
    make_file(path / "first", b"first")
    make_file(path / "deep" / "second", b"second" * 2000, 0o400)
    os.link(path / "first", path / "deep" / "also first")
    make_link(path / "deep" / "link", "nowhere/at all")
    make_file(path / "deep" / "deeper" / os.fsdecode(b"no\xfftext\n"), b"odd")
    (path / "empty").mkdir()
    _set_attribute(path / "deep", b"red")
    for folder in (path / "empty", path / "deep" / "deeper", path / "deep", path):
        _set_time(folder)
    (path / "deep" / "deeper").chmod(0o555)
    return path


def _set_attribute(path: Path, value: bytes):
    # A tmpfs of an older kernel has none.
    with contextlib.suppress(OSError):
        os.setxattr(path, "user.colour", value)


def _set_time(path: Path):
    moment = MOMENT_NS + next(_moments) * 1_000_000_007
    os.utime(path, ns=(moment, moment), follow_symlinks=False)
