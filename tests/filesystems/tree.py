"""Random folder trees: what an index takes up, strewn with what it must leave out."""

import os
import random

WORDS = [b"archive", b"Budget", b"caf\xc3\xa9", b"draft", b"Zoo", b"notes", b"r\xc3\xa9sum\xc3\xa9", b"with space", b"a.b", b"x"]
ODD = [b"line\nbreak", b"no utf-8 \xff\xfe", b"tab\tand\x1bescape", b"-dash", b"app", b"trailing."]
BUNDLES = [b"Tool.app", b"Data.BUNDLE", b"pictures.photoslibrary", b"Old.pkg"]


class TreeMaker:
    """Fills folders below a root in a random order, the same one for the same seed."""

    def __init__(self, root, seed, any_bytes=True):
        self.root = os.fsencode(root)
        self.random = random.Random(seed)
        self._odd = ODD if any_bytes else [b"-dash", b"app", b"inner  spaces"]
        self.folders = [self.root]

    def fill(self, folders: int):
        """Makes this many plain folders in random places, and something else beside each of them."""
        for _ in range(folders):
            parent = self.random.choice(self.folders[-40:] if self.random.random() < 0.7 else self.folders)
            self._strew(parent)
            path = self._free(parent, self._odd if self.random.random() < 0.15 else WORDS)
            os.mkdir(path)
            self.folders.append(path)
            self._strew(parent)
        return self

    def churn(self, operations: int):
        """Removes, renames and moves what was made, so that the file system has counted up and down."""
        for _ in range(operations):
            path = self.random.choice(self.folders[1:])
            what = self.random.random()
            if what < 0.4:
                self._remove(path)
            elif what < 0.7:
                self._move(path, self._free(os.path.dirname(path), WORDS))
            else:
                parent = self.random.choice(self.folders)
                if not (parent + b"/").startswith(path + b"/"):
                    self._move(path, self._free(parent, WORDS))
            if len(self.folders) < 20:
                self.fill(20)
        return self

    def _strew(self, parent):
        what = self.random.random()
        if what < 0.35:
            for number in range(self.random.choice((1, 1, 2, 40))):
                with open(self._free(parent, [b"file %d.txt" % number]), "wb"):
                    pass
        elif what < 0.5:
            os.makedirs(self._free(parent, [b".hidden", b".git"]) + b"/objects/below")
        elif what < 0.6:
            os.makedirs(self._free(parent, BUNDLES, last=True) + b"/Contents/Resources")
        elif what < 0.7:
            target = self.random.choice([self.root, b"..", b".", b"no such folder", self.random.choice(self.folders)])
            os.symlink(target, self._free(parent, [b"link"]))
        elif what < 0.73:
            os.mkfifo(self._free(parent, [b"pipe"]))

    def _free(self, parent, names, last=False):
        """A path that is not taken; `last` keeps the ending of the name."""
        name, number = self.random.choice(names), 0
        while True:
            mark = b"" if number == 0 else b"%d" % number
            path = parent + b"/" + (mark + name if last else name + mark)
            if not os.path.lexists(path):
                return path
            number += 1

    def _remove(self, path):
        for folder, folders, files in os.walk(path, topdown=False):
            for name in files:
                os.unlink(folder + b"/" + name)
            for name in folders:
                inner = folder + b"/" + name
                os.unlink(inner) if os.path.islink(inner) else os.rmdir(inner)
        os.rmdir(path)
        self.folders = [folder for folder in self.folders if not (folder + b"/").startswith(path + b"/")]

    def _move(self, old, new):
        os.rename(old, new)
        prefix = old + b"/"
        self.folders = [
            new + folder[len(old) :] if (folder + b"/").startswith(prefix) else folder for folder in self.folders
        ]
