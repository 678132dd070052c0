"""The ordinary user that everything on the desktop runs as."""

import glob
import os
import shutil
import stat
from pathlib import Path

UNUSED_ID = 52000


class Account:
    """Owns a temporary folder with a home, a runtime folder and the user database that knows them.

    Run by root, the programs get a user id that needs no account on the machine; run by anybody else, they keep the
    own one. Either way the user database that the programs see gives the user this home.
    """

    def __init__(self, base: Path):
        root = os.geteuid() == 0
        self.uid = UNUSED_ID if root else os.getuid()
        self.gid = UNUSED_ID if root else os.getgid()
        self.base = base
        self.home = base / "home"
        self.runtime = base / "run"
        self.logs = base / "logs"
        base.chmod(0o755)
        for folder in (self.home, self.runtime, self.logs):
            folder.mkdir()
        self.runtime.chmod(0o700)
        (base / "passwd").write_text(f"tester:x:{self.uid}:{self.gid}:Tester:{self.home}:/bin/sh\n")
        (base / "group").write_text(f"tester:x:{self.gid}:\n")
        self.give(base)

    def give(self, path):
        """Makes the user the owner of a path and of everything below it."""
        if os.geteuid() != 0:
            return
        os.chown(path, self.uid, self.gid, follow_symlinks=False)
        for folder, folders, files in os.walk(os.fsencode(path)):
            for name in folders + files:
                os.chown(os.path.join(folder, name), self.uid, self.gid, follow_symlinks=False)

    def credentials(self) -> dict:
        """The arguments of Popen that start a program as this user."""
        return {"user": self.uid, "group": self.gid, "extra_groups": []} if os.geteuid() == 0 else {}

    def environment(self) -> dict:
        """A whole environment: nothing of the machine's own desktop or user is left in it."""
        if not glob.glob("/usr/lib/*/libnss_wrapper.so"):
            raise RuntimeError("libnss_wrapper.so is missing: install libnss-wrapper")
        home = str(self.home)
        return {
            "PATH": "/usr/local/bin:/usr/bin:/bin",
            "HOME": home,
            "USER": "tester",
            "LOGNAME": "tester",
            "SHELL": "/bin/sh",
            "LANG": "C.UTF-8",
            "LD_PRELOAD": "libnss_wrapper.so",
            "NSS_WRAPPER_PASSWD": str(self.base / "passwd"),
            "NSS_WRAPPER_GROUP": str(self.base / "group"),
            "XDG_RUNTIME_DIR": str(self.runtime),
            "XDG_CONFIG_HOME": f"{home}/.config",
            "XDG_DATA_HOME": f"{home}/.local/share",
            "XDG_CACHE_HOME": f"{home}/.cache",
            "XDG_STATE_HOME": f"{home}/.local/state",
        }

    def reachable(self, path: Path) -> bool:
        """Whether the user may pass through every folder above `path`."""
        if os.geteuid() != 0:
            return True
        return all(folder.stat().st_mode & stat.S_IXOTH for folder in path.resolve().parents)

    def remove(self):
        """Deletes the temporary folder, whatever permissions the programs left behind."""

        def permit(function, path, _):
            os.chmod(os.path.dirname(path), 0o700)
            if os.path.isdir(path) and not os.path.islink(path):
                os.chmod(path, 0o700)
                shutil.rmtree(path)
            else:
                function(path)

        shutil.rmtree(os.fsencode(self.base), onerror=permit)
