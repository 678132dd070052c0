"""passthrough.py SOURCE MOUNT --links N [--without-types]: a FUSE mount of a folder, to be read only.

It reports N links for every folder, whatever it holds, or the true number for "true"; and the types of what it lists,
or none. File systems of all these kinds exist.
"""

import argparse
import errno
import os
import stat

import fusepy as fuse

# Paths are bytes, and Latin-1 is a name for each of them.
ENCODING = "latin-1"


class Passthrough(fuse.Operations):
    def __init__(self, source, links, with_types):
        self._source = os.fsencode(source)
        self._links = links
        self._with_types = with_types

    def _real(self, path):
        return self._source + path.encode(ENCODING)

    def getattr(self, path, fh=None):
        return self._attributes(self._real(path))

    def _attributes(self, real):
        try:
            status = os.lstat(real)
        except OSError as error:
            raise fuse.FuseOSError(error.errno) from error
        names = ("st_mode", "st_nlink", "st_size", "st_uid", "st_gid", "st_mtime", "st_atime", "st_ctime")
        attributes = {name: getattr(status, name) for name in names}
        if stat.S_ISDIR(status.st_mode) and self._links is not None:
            attributes["st_nlink"] = self._links
        return attributes

    def readdir(self, path, fh):
        real = self._real(path)
        for name in [b".", b"..", *os.listdir(real)]:
            known = self._attributes(real + b"/" + name) if self._with_types else None
            text = name.decode(ENCODING)
            yield (text, known, 0) if known else text

    def readlink(self, path):
        return os.readlink(self._real(path)).decode(ENCODING)

    def access(self, path, mode):
        if not os.access(self._real(path), mode, follow_symlinks=False):
            raise fuse.FuseOSError(errno.EACCES)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("source")
    parser.add_argument("mount")
    parser.add_argument("--links", default="true")
    parser.add_argument("--without-types", action="store_true")
    given = parser.parse_args()
    links = None if given.links == "true" else int(given.links)
    operations = Passthrough(given.source, links, not given.without_types)
    fuse.FUSE(operations, given.mount, foreground=True, nothreads=True, ro=True, encoding=ENCODING)


if __name__ == "__main__":
    main()
