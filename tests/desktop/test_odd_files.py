"""Files and folders that are not as one would like them: nothing is lost, and the user is told."""

import os
import signal

import pytest

from filing import contents
from harness import wait_until
from harness.picker import COPY, MOVE

LONG = "n" * 251 + ".txt"


@pytest.mark.parametrize("name", ["-rf", LONG, "100%#?&.txt", "quo'te\".txt", " blank ", "a\\b", "<b>bold&amp;"])
def test_an_odd_name_is_moved_and_named_exactly(filing, name):
    filing.show_selected({name: b"odd"})
    _file_away(filing, MOVE)
    filing.wait_for_action("Moved", [name], filing.cabinet / "Taxes")
    assert contents(filing.cabinet / "Taxes") == {name: b"odd"}


def test_a_name_that_is_no_text_is_moved_byte_for_byte(filing):
    name = os.fsdecode(b"caf\xe9\xff.txt")
    filing.show_selected({name: b"odd"})
    _file_away(filing, MOVE)
    wait_until(lambda: os.listdir(os.fsencode(filing.cabinet / "Taxes")) == [os.fsencode(name)], "the file is there")
    assert contents(filing.inbox) == {}
    wait_until(filing.action_texts, "the move was said")
    assert filing.action_texts()[0].startswith("Moved file caf")


def test_a_clash_of_the_longest_name_loses_nothing(filing):
    filing.show_selected({LONG: b"new"})
    (filing.cabinet / "Taxes" / LONG).write_bytes(b"old")
    _file_away(filing, MOVE)
    wait_until(filing.action_texts, "the user was told")
    found = sorted([*contents(filing.cabinet / "Taxes").values(), *contents(filing.inbox).values()])
    assert found == [b"new", b"old"]


def test_a_file_that_vanished_meanwhile_is_passed_over(filing):
    gone, _ = filing.show_selected({"gone.txt": b"1", "kept.txt": b"2"})
    filing.invoke(MOVE)
    gone.unlink()
    filing.choose("taxes")
    filing.confirm()
    filing.wait_for_action("Moved", ["kept.txt"], filing.cabinet / "Taxes")
    assert contents(filing.cabinet / "Taxes") == {"kept.txt": b"2"}


@pytest.mark.parametrize("mode, text", [(MOVE, "Error moving file: "), (COPY, "Error copying file: ")])
def test_a_folder_that_takes_nothing_is_said_and_the_files_stay(filing, mode, text):
    filing.show_selected({"a.txt": b"a"})
    (filing.cabinet / "Taxes").chmod(0o500)
    _file_away(filing, mode)
    wait_until(filing.action_texts, "the user was told")
    (said,) = filing.action_texts()
    assert said.startswith(text)
    assert "Permission denied" in said
    assert str(filing.cabinet / "Taxes") in said or str(filing.inbox / "a.txt") in said
    assert contents(filing.inbox) == {"a.txt": b"a"}
    assert contents(filing.cabinet / "Taxes") == {}


def test_a_chosen_folder_that_vanished_is_said_and_the_files_stay(filing):
    filing.show_selected({"a.txt": b"a"})
    filing.invoke(MOVE)
    filing.choose("old")
    # The list would follow at once: the key must be there before.
    process = filing.desktop.brimwick.process
    process.send(signal.SIGSTOP)
    (filing.attic / "old/resume").rmdir()
    (filing.attic / "old").rmdir()
    filing.desktop.keyboard.tap("Return")
    process.send(signal.SIGCONT)
    filing.desktop.brimwick.wait_until_hidden()
    wait_until(lambda: any(t.startswith("Error moving file: ") for t in filing.action_texts()), "the error was said")
    assert contents(filing.inbox) == {"a.txt": b"a"}
    assert not (filing.attic / "old").exists()


def _file_away(filing, mode):
    filing.invoke(mode)
    filing.choose("taxes")
    filing.confirm()
