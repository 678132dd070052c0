"""A walk done the plain way."""

import os
import stat

BUNDLES = (
    b".app", b".appdir", b".bundle", b".framework", b".plugin", b".kext", b".rtfd", b".pkg", b".photoslibrary",
    b".xcodeproj",
)  # fmt: skip


def walk(root) -> list:
    """The root, and all folders below it, each before its own, in the order in which the system lists them; without
    folders with a dot, bundles and links, and without what is in a folder that cannot be read."""
    found, to_do = [], [os.fsencode(root)]
    while to_do:
        path = to_do.pop()
        found.append(path)
        try:
            names = os.listdir(path)
        except OSError:
            continue
        to_do.extend(path + b"/" + name for name in reversed(names) if _is_taken_up(path, name))
    return found


def _is_taken_up(parent, name) -> bool:
    if name.startswith(b".") or name.lower().endswith(BUNDLES):
        return False
    try:
        return stat.S_ISDIR(os.lstat(parent + b"/" + name).st_mode)
    except OSError:
        return False
