"""Folders on disk that are hard to walk: odd names, links, bundles, what cannot be read, and what is no folder."""

import os
import random
import socket

ODD_NAMES = (
    b"plain", b"two words", b"new\nline", b"tab\there", b"-rf", b"*", b"caf\xc3\xa9", b"cafe\xcc\x81", b"bad\xff\xfe",
    b"\xc3", b"\xed\xa0\x80", b"back\\slash", b"'quote\"", b"~", b"a" * 255, "長い名前".encode(), b"app", b"x.app.old",
    b"trailing.", b" space", b"space ", b"a.b.c", b"#", b"%2F", b"$HOME", b"CON",
)  # fmt: skip
LEFT_OUT_NAMES = (
    b".hidden", b"..twice", b"...", b".app", b"Tool.app", b"TOOL.APP", b"x.AppDir", b"y.appdir", b"z.Bundle",
    b"f.framework", b"p.plugin", b"k.kext", b"r.rtfd", b"i.pkg", b"l.photoslibrary", b"j.xcodeproj", b"two.app.app",
)  # fmt: skip
# Nothing at all; passed through but not listed.
UNREADABLE = (0o000, 0o311, 0o111)


class RandomTree:
    """Makes a tree below an empty folder, the same for the same seed."""

    def __init__(self, seed, top: bytes):
        self._rnd = random.Random(seed)
        self._top = top
        self._folders = [top]
        # Those that a walk passes through.
        self._walked = [top]
        self._closed = []

    def make(self, folders):
        for _ in range(folders):
            among = self._walked if self._rnd.random() < 0.85 else self._folders
            parent = self._rnd.choice(among[-40:])
            self._make_folder(parent)
            for _ in range(self._rnd.choice((0, 0, 1, 2))):
                self._make_other(parent)
        # Last: nothing could be made in them otherwise.
        for folder in self._closed:
            os.chmod(folder, self._rnd.choice(UNREADABLE))

    def open_again(self):
        """Lets the tree be deleted."""
        for folder in self._closed:
            os.chmod(folder, 0o700)

    def some_folders(self, count) -> list:
        return [self._rnd.choice(self._folders) for _ in range(count)]

    def _fresh(self, parent, names) -> bytes:
        """The path of a name that is not taken there, as far as that goes."""
        name = self._rnd.choice(names)
        path = os.path.join(parent, name)
        if os.path.lexists(path):
            path = os.path.join(parent, b"%d %s" % (len(self._folders), name[:200]))
        return path

    def _make_folder(self, parent):
        kind = self._rnd.random()
        path = self._fresh(parent, LEFT_OUT_NAMES if kind < 0.2 else ODD_NAMES)
        if len(path) > 3500 or os.path.lexists(path):
            return
        os.mkdir(path)
        self._folders.append(path)
        if kind > 0.94:
            self._closed.append(path)
        elif kind >= 0.2 and parent in self._walked:
            self._walked.append(path)

    def _make_other(self, parent):
        path = self._fresh(parent, ODD_NAMES + LEFT_OUT_NAMES)
        if len(path) > 3500 or os.path.lexists(path):
            return
        make = self._rnd.choice((self._file, self._link, self._dangling_link, self._loop, self._fifo, self._socket))
        make(path)

    def _file(self, path):
        os.mknod(path)

    def _link(self, path):
        os.symlink(self._rnd.choice(self._folders), path)

    def _dangling_link(self, path):
        os.symlink(b"nowhere", path)

    def _loop(self, path):
        os.symlink(os.path.basename(path), path)

    def _fifo(self, path):
        os.mkfifo(path)

    def _socket(self, path):
        # A socket's path must be short.
        folder = os.open(os.path.dirname(path), os.O_PATH)
        try:
            short = b"/proc/self/fd/%d/%s" % (folder, os.path.basename(path)[:40])
            if not os.path.lexists(short):
                with socket.socket(socket.AF_UNIX) as endpoint:
                    endpoint.bind(short)
        finally:
            os.close(folder)
