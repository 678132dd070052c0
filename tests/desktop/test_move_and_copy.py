"""Files are selected in the file manager, a hot key is pressed, part of a folder's name is typed, Return."""

import errno
import os

import pytest

from filing import contents
from harness.picker import COPY, MOVE

NAMES = {"letter.txt": b"one", "two\nlines.txt": b"two", "履歴書.txt": b"three"}


@pytest.mark.short
def test_move_files_the_selection_away_under_the_chosen_folder(filing):
    files = filing.show_selected(NAMES)
    (filing.resumes / "letter.txt").write_bytes(b"older")
    filing.invoke(MOVE)
    filing.choose("resume", filing.ROWS.index("Résumés"))
    filing.confirm()

    filing.wait_for_action("Moved", NAMES, filing.resumes)
    filing.wait_until_files_are_back_in_front()
    assert contents(filing.resumes) == {**NAMES, "letter.txt": b"older", "letter(1).txt": b"one"}
    assert not any(os.path.lexists(file) for file in files)
    assert all(notification.is_well_formed() for notification in filing.desktop.notifications.all())
    stored = filing.desktop.preferences.read()
    assert (stored["WickWindowWidth"], stored["WickWindowHeight"]) == ("520", "572")
    assert stored["IndexedFolders"] == [str(filing.cabinet), str(filing.attic)]


@pytest.mark.parametrize("name", ["Résumé 2024", "resume"])
def test_each_row_of_similar_names_is_the_folder_it_shows(filing, name):
    filing.show_selected(NAMES)
    row = filing.ROWS.index(name)
    filing.invoke(MOVE)
    filing.choose("resume", row)
    filing.confirm()
    filing.wait_for_action("Moved", NAMES, filing.folders[row])
    assert contents(filing.folders[row]) == NAMES


def test_arrow_keys_stop_at_the_first_and_the_last_row(filing):
    filing.show_selected({"a.txt": b"a"})
    filing.invoke(MOVE)
    filing.choose("resume", 10)
    filing.desktop.keyboard.tap("Up")
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], filing.resumes)


@pytest.mark.short
def test_copy_leaves_the_sources_and_keeps_what_is_known_of_a_file(filing):
    files = filing.show_selected(NAMES)
    files[0].chmod(0o640)
    os.utime(files[0], ns=(1_600_000_000_123_456_789, 1_500_000_000_123_456_789))
    before = files[0].stat()
    filing.invoke(COPY)
    filing.choose("resume", filing.ROWS.index("Résumés"))
    filing.confirm()

    filing.wait_for_action("Copied", NAMES, filing.resumes)
    filing.wait_until_files_are_back_in_front()
    assert contents(filing.inbox) == NAMES
    assert contents(filing.resumes) == NAMES
    after = (filing.resumes / files[0].name).stat()
    assert (after.st_mode, after.st_mtime_ns) == (before.st_mode, before.st_mtime_ns)
    assert after.st_ino != before.st_ino


def test_copy_keeps_extended_attributes(filing):
    files = filing.show_selected({"a.txt": b"a"})
    try:
        os.setxattr(files[0], "user.origin", b"scanner")
    except OSError as error:
        if error.errno != errno.ENOTSUP:
            raise
        pytest.skip("the temporary folder keeps no extended attributes")
    filing.invoke(COPY)
    filing.choose("taxes")
    filing.confirm()
    filing.wait_for_action("Copied", ["a.txt"], filing.cabinet / "Taxes")
    assert os.getxattr(filing.cabinet / "Taxes/a.txt", "user.origin") == b"scanner"


def test_a_second_clash_counts_on_whatever_the_file(filing):
    filing.show_selected({"a.txt": b"new a", "b": b"new b"})
    for name in ("a.txt", "b"):
        (filing.resumes / name).write_bytes(b"older")
    filing.invoke(COPY)
    filing.choose("resumes")
    filing.confirm()
    filing.wait_for_action("Copied", ["a.txt", "b"], filing.resumes)
    assert contents(filing.resumes) == {
        "a.txt": b"older",
        "b": b"older",
        "a(1).txt": b"new a",
        "b(2)": b"new b",
    }


def test_a_folder_is_moved_whole(filing):
    (papers,) = filing.desktop.make_folder("inbox/papers/deep")
    filing.desktop.make_files(papers, {"x.txt": b"x"})
    filing.window = filing.desktop.file_manager.open(filing.inbox)
    filing.desktop.file_manager.select_all([filing.inbox / "papers"])
    filing.invoke(MOVE)
    filing.choose("letters")
    filing.confirm()
    filing.wait_for_action("Moved", ["papers"], filing.attic / "Letters")
    assert (filing.attic / "Letters/papers/deep/x.txt").read_bytes() == b"x"
    assert not (filing.inbox / "papers").exists()


def test_return_with_no_folder_found_is_refused_and_the_picker_stays(filing):
    filing.show_selected({"a.txt": b"a"})
    filing.invoke(MOVE)
    filing.choose("no such folder")
    filing.desktop.keyboard.tap("Return")
    filing.desktop.notifications.wait_for("No folders are present in the list.")
    assert contents(filing.inbox) == {"a.txt": b"a"}
    assert filing.desktop.brimwick.picker()
