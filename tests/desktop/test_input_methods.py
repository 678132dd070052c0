"""Text that takes more than one key: dead keys, compose sequences and an input method, in the search field."""

import pytest

from filing import Filing
from harness import wait_until
from harness.input_method import InputMethod
from harness.picker import MOVE, OPEN
from recording import Recording

US_INTERNATIONAL = ("-layout", "us", "-variant", "intl")
WITH_COMPOSE_KEY = ("-layout", "us", "-option", "compose:menu")


@pytest.fixture
def typing(desktop):
    """Brimwick with the folders of `Filing`, on a keyboard of the test's choice; what shows the picker."""

    def show(layout=("-layout", "us"), environment=None, mode=OPEN):
        desktop.keyboard.set_layout(*layout)
        filing = Filing(desktop)
        desktop.make_folder("Cabinet/Møller", "Cabinet/O'Brien", "Cabinet/한글")
        desktop.brimwick.start(environment={"LC_ALL": "C.UTF-8", **(environment or {})})
        filing.show_selected({"a.txt": b"a"})
        filing.invoke(mode)
        return filing

    return show


def text_of_search_field(filing) -> str:
    """Read by copying it; the clipboard says something else before."""
    filing.desktop.clipboard.hold(b"nothing yet")
    filing.desktop.keyboard.chord("ctrl+a")
    filing.desktop.keyboard.chord("ctrl+c")
    wait_until(lambda: filing.desktop.clipboard.read() != b"nothing yet", "the text is copied")
    return filing.desktop.clipboard.read().decode()


def test_dead_keys_type_accents(typing):
    filing = typing(US_INTERNATIONAL)
    # At once, while the picker learns that it has the focus.
    for key in ("r", "dead_acute", "e", "s", "u", "m", "dead_acute", "e"):
        filing.desktop.keyboard.tap(key)
    assert text_of_search_field(filing) == "résumé"


def test_a_dead_key_and_a_space_type_the_accent_itself(typing):
    filing = typing(US_INTERNATIONAL, mode=MOVE)
    for key in ("o", "dead_acute", "space", "b"):
        filing.desktop.keyboard.tap(key)
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], filing.cabinet / "O'Brien")


def test_a_compose_sequence_types_its_character(typing):
    filing = typing(WITH_COMPOSE_KEY, mode=MOVE)
    for key in ("m", "Multi_key", "o", "slash", "l"):
        filing.desktop.keyboard.tap(key)
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], filing.cabinet / "Møller")


@pytest.fixture
def input_method(desktop):
    with InputMethod(desktop) as input_method:
        yield input_method


def test_an_input_method_that_hands_keys_on_leaves_all_of_them_as_they_are(typing, input_method):
    filing = typing(environment=input_method.environment, mode=MOVE)
    filing.choose("resume", row=1)
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], filing.resumes)
    filing.wait_until_files_are_back_in_front()


def test_hot_keys_are_recorded_and_work_with_an_input_method_on(typing, input_method):
    filing = typing(environment=input_method.environment)
    input_method.use("hangul")
    filing.desktop.keyboard.tap("Escape")
    filing.desktop.brimwick.wait_until_hidden()
    recording = Recording(filing)
    recording.press("super+shift+h")
    recording.wait_until_stored("4")
    recording.close()
    recording.check_that_it_opens_the_picker("super+shift+h")


def test_return_ends_the_syllable_of_an_input_method_before_it_files_away(typing, input_method):
    filing = typing(environment=input_method.environment, mode=MOVE)
    input_method.use("hangul")
    # The engine begins with Latin letters.
    filing.desktop.keyboard.chord("shift+space")
    filing.desktop.keyboard.type("gksrmf")
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], filing.cabinet / "한글")
