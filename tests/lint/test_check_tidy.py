import importlib.machinery
import importlib.util
import json

import pytest
from conftest import SCRIPTS


@pytest.fixture
def check(tree, monkeypatch):
    loader = importlib.machinery.SourceFileLoader("check_tidy", str(SCRIPTS / "check-tidy"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("check_tidy", loader))
    loader.exec_module(module)
    monkeypatch.setattr(module, "INCLUDE_FOLDERS", (tree.root / "src", tree.root / "tests"))
    return module


def forget_files(check):
    check.content.cache_clear()
    check.included.cache_clear()


def stamp(check, tree, rules=b"rules", command="c++"):
    forget_files(check)
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


@pytest.fixture
def project(check, tree, monkeypatch):
    """Runs the check over files of the little tree, and yields what it prints and how often it called clang-tidy."""
    monkeypatch.setattr(check, "ROOT", tree.root)
    monkeypatch.setattr(check, "BUILD", tree.root / "build/debug")
    monkeypatch.setattr(check, "CACHE", tree.root / "build/tidy-cache")
    tree.write(".clang-tidy", (SCRIPTS.parent / ".clang-tidy").read_text())
    calls = []
    original = check.clang_tidy
    monkeypatch.setattr(check, "clang_tidy", lambda file, flags: calls.append(file) or original(file, flags))

    def run(capsys, **files):
        for name, text in files.items():
            tree.write(f"src/model/{name}.cpp", text)
        paths = sorted((tree.root / "src").rglob("*.cpp"))
        commands = [{"file": str(path), "command": f"c++ -std=c++20 -o {path.stem}.o -c {path}"} for path in paths]
        tree.write("build/debug/compile_commands.json", json.dumps(commands))
        calls.clear()
        forget_files(check)
        status = check.main()
        out = capsys.readouterr().out.splitlines()
        assert status == (1 if out else 0)
        return out, len(calls)

    return run


CLEAN = "int {0}() {{ return 1; }}\n"
DEFECT = "int* {0}() {{ return 0; }}\n"


def test_clean_files_of_one_folder_are_read_together_and_once(project, capsys):
    files = {name: CLEAN.format(name) for name in "abcd"}
    assert project(capsys, **files) == ([], 1)
    assert project(capsys) == ([], 0)
    assert project(capsys, b=CLEAN.format("other")) == ([], 1)


@pytest.mark.parametrize("bad", "abcd")
def test_a_defect_is_found_among_clean_files_where_it_stands(project, capsys, bad):
    files = {name: (DEFECT if name == bad else CLEAN).format(name) for name in "abcd"}
    found, _ = project(capsys, **files)
    assert found == [f"src/model/{bad}.cpp:1: use nullptr [modernize-use-nullptr,-warnings-as-errors]"]
    # Only what is not known to be clean is read again.
    assert project(capsys) == (found, 1)
    assert project(capsys, **{bad: CLEAN.format(bad)}) == ([], 1)


def test_files_that_do_not_compile_together_are_read_apart(project, capsys):
    helper = "namespace {{ int helper() {{ return 1; }} }}\n{}"
    files = {name: helper.format(CLEAN.format(name)) for name in "abc"}
    assert project(capsys, **files)[0] == []
    found, _ = project(capsys, b=helper.format(DEFECT.format("b")))
    assert found == ["src/model/b.cpp:2: use nullptr [modernize-use-nullptr,-warnings-as-errors]"]


def test_a_file_that_does_not_compile_is_a_finding(project, capsys):
    found, _ = project(capsys, a=CLEAN.format("a"), b="int b() { return nothing; }\n")
    assert found == ["src/model/b.cpp:1: use of undeclared identifier 'nothing' [clang-diagnostic-error]"]
