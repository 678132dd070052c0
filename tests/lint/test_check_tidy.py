import importlib.machinery
import importlib.util

import pytest
from conftest import SCRIPTS


@pytest.fixture
def check(tree, monkeypatch):
    loader = importlib.machinery.SourceFileLoader("check_tidy", str(SCRIPTS / "check-tidy"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("check_tidy", loader))
    loader.exec_module(module)
    monkeypatch.setattr(module, "INCLUDE_FOLDERS", (tree.root / "src", tree.root / "tests"))
    return module


def stamp(check, tree, rules=b"rules", command="c++"):
    check.content.cache_clear()
    check.included.cache_clear()
    return check.stamp_of({"command": command, "file": str(tree.root / "src/model/A.cpp")}, rules)


@pytest.fixture
def sources(tree):
    tree.write("src/model/A.cpp", '#include "model/A.h"\n')
    tree.write("src/model/A.h", '#include "B.h"\n')
    tree.write("src/model/B.h", "int b;\n")
    tree.write("src/model/C.h", "int c;\n")


@pytest.mark.usefixtures("sources")
@pytest.mark.parametrize("path", ["src/model/A.cpp", "src/model/A.h", "src/model/B.h"])
def test_a_file_is_checked_again_when_it_or_what_it_includes_has_changed(check, tree, path):
    before = stamp(check, tree)
    tree.write(path, (tree.root / path).read_text() + "int more;\n")
    assert stamp(check, tree) != before


@pytest.mark.usefixtures("sources")
def test_a_file_is_not_checked_again_when_something_else_has_changed(check, tree):
    before = stamp(check, tree)
    tree.write("src/model/C.h", "int other;\n")
    assert stamp(check, tree) == before


@pytest.mark.usefixtures("sources")
def test_a_file_is_checked_again_with_other_rules_or_flags(check, tree):
    assert len({stamp(check, tree), stamp(check, tree, rules=b"others"), stamp(check, tree, command="c++ -O2")}) == 3
