"""Whatever was on the clipboard is on it again after Brimwick has asked the file manager for its selection."""

import pytest

from harness import wait_until
from harness.clipboard import TEXT
from harness.picker import COPY, MOVE

PICTURE = b"\x89PNG\r\n\x1a\n" + bytes(range(256)) * 4
LARGE_PICTURE = b"\x89PNG\r\n\x1a\n" + bytes(range(256)) * 8192
CONTENTS = [(TEXT, "Grüße, 世界\nzwei".encode()), ("image/png", PICTURE), ("image/png", LARGE_PICTURE)]
NAMES = ["text", "picture", "large picture"]


@pytest.mark.short
@pytest.mark.parametrize("kind, content", CONTENTS, ids=NAMES)
def test_the_clipboard_is_the_same_after_the_selection_was_read(filing, kind, content):
    filing.show_selected({"a.txt": b"a"})
    filing.desktop.clipboard.hold(content, kind)
    filing.invoke(MOVE)
    _expect(filing, kind, content)
    filing.choose("taxes")
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], filing.cabinet / "Taxes")
    _expect(filing, kind, content)


@pytest.mark.parametrize("kind, content", CONTENTS, ids=NAMES)
def test_the_clipboard_is_the_same_after_a_refusal(filing, kind, content):
    filing.show_unselected({"a.txt": b"a"})
    filing.desktop.clipboard.hold(content, kind)
    filing.press_hot_key(COPY)
    wait_until(lambda: filing.action_texts(), "the refusal was said")
    _expect(filing, kind, content)


def test_files_copied_before_in_the_file_manager_can_still_be_pasted(filing):
    filing.show_selected({"a.txt": b"a"})
    (earlier,) = filing.desktop.make_files(filing.attic / "Letters", {"earlier.txt": b"earlier"})
    filing.desktop.file_manager.open(earlier.parent)
    filing.desktop.file_manager.select_all([earlier])
    filing.desktop.keyboard.chord("alt+F4")
    filing.wait_until_files_are_back_in_front()
    copied = filing.desktop.clipboard.read("text/uri-list")
    assert copied.endswith(b"earlier.txt\r\n")
    kinds = set(filing.desktop.clipboard.kinds())

    filing.invoke(MOVE)
    assert filing.desktop.clipboard.read("text/uri-list") == copied
    assert {kind for kind in kinds if "/" in kind} <= set(filing.desktop.clipboard.kinds())
    filing.choose("taxes")
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], filing.cabinet / "Taxes")
    filing.wait_until_files_are_back_in_front()
    filing.desktop.keyboard.chord("ctrl+v")
    wait_until((filing.inbox / "earlier.txt").exists, "the file copied before was pasted")


def test_an_empty_clipboard_stays_empty(filing):
    filing.show_selected({"a.txt": b"a"})
    filing.desktop.clipboard.empty()
    filing.invoke(MOVE)
    assert filing.desktop.clipboard.kinds() == []


def _expect(filing, kind, content):
    assert filing.desktop.clipboard.read(kind) == content
    others = [other for other in filing.desktop.clipboard.kinds() if "uri" in other or "copied-files" in other]
    assert others == []
