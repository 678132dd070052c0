"""The programs that people would otherwise use, asked for the same as Brimwick."""

import shutil
import subprocess
from pathlib import Path

from .timing import CannotMeasure

# Of the folders that the index leaves out, these are the bundles that bench/make-tree makes.
BUNDLES = ("*.app", "*.photoslibrary")


def found(name: str) -> str:
    """Where a program is installed."""
    path = shutil.which(name)
    if path is None:
        raise CannotMeasure(f"{name} is missing: scripts/install-packages bench installs it")
    return path


def folder_listers(tree: Path) -> dict:
    """Commands that print the path of every folder that the index of a tree holds, except its own."""
    left_out = [word for pattern in (".*", *BUNDLES) for word in ("-o", "-name", pattern)][1:]
    expression = ["-mindepth", "1", "-type", "d", "(", *left_out, ")", "-prune", "-o", "-type", "d", "-print"]
    excluded = [word for pattern in BUNDLES for word in ("--exclude", pattern)]
    return {
        "find": [found("find"), str(tree), *expression],
        "bfs": [found("bfs"), str(tree), *expression],
        "fd -j2": [found("fdfind"), "-j2", "--type", "d", "--no-ignore", *excluded, ".", str(tree)],
    }


class NameSearchers:
    """Programs that find a text in the names of the same folders, each over a file of its own kind."""

    def __init__(self, paths_file: Path, work_folder: Path):
        """`paths_file` lists the folders, a line each."""
        self.names_file = work_folder / "names.txt"
        names = (path.rpartition(b"/")[2] for path in paths_file.read_bytes().splitlines())
        self.names_file.write_bytes(b"".join(name + b"\n" for name in names))
        self._locate, build = unpacked_plocate(work_folder)
        self._database = work_folder / "plocate.db"
        self._database.unlink(missing_ok=True)
        visible = ["--require-visibility", "no"]
        subprocess.run([build, "--plaintext", *visible, paths_file, self._database], check=True)

    def commands(self, text: str) -> dict:
        """{name: (command, file to read from or None)}; rg and plocate do not look through accents."""
        return {
            "ripgrep": ([found("rg"), "-i", "-F", "-c", "-e", text, str(self.names_file)], None),
            "fzf": ([found("fzf"), "-i", "--exact", "--filter", text], self.names_file),
            "plocate": ([str(self._locate), "-d", str(self._database), "-i", "-b", "-c", text], None),
        }


def unpacked_plocate(work_folder: Path):
    """plocate and the maker of its database. Unpacked rather than installed: the package would index the whole disk
    at once and every day."""
    folder = work_folder / "plocate"
    locate, build = folder / "usr/bin/plocate", folder / "usr/sbin/plocate-build"
    if not locate.exists():
        folder.mkdir(exist_ok=True)
        try:
            subprocess.run(["apt-get", "download", "-q", "plocate"], cwd=folder, check=True, capture_output=True)
            package = next(folder.glob("plocate_*.deb"))
            subprocess.run(["dpkg-deb", "-x", package, folder], check=True)
        except (OSError, subprocess.CalledProcessError, StopIteration) as error:
            raise CannotMeasure(f"plocate cannot be fetched with apt-get download: {error}") from error
    return locate, build
