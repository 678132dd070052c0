import pathlib
import subprocess

import pytest

SCRIPTS = pathlib.Path(__file__).resolve().parent.parent.parent / "scripts"


class Tree:
    """A little source tree, and what a check finds in it."""

    def __init__(self, root):
        self.root = root
        self.write("src/CMakeLists.txt", "")

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def check(self, name):
        """The lines that the check prints, having made sure that its exit status agrees with them."""
        done = subprocess.run([SCRIPTS / name, self.root], capture_output=True, text=True)
        assert done.stderr == ""
        assert done.returncode == (1 if done.stdout else 0)
        return done.stdout.splitlines()


@pytest.fixture
def tree(tmp_path):
    return Tree(tmp_path)
