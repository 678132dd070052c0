"""The notifications tab of the preferences window, with real keys and a real mouse."""

import pytest

from harness import wait_until
from harness.preferences_window import CHECK_BOXES, PULSE, ROTATE
from harness.waiting import holds_for
from recording import Recording

STYLE = "NotificationAnimationStyle"


@pytest.fixture
def recording(filing):
    return Recording(filing)


def stored(recording) -> dict:
    return recording.desktop.preferences.read()


def open_tab_by_keys(recording):
    for _ in range(3):
        recording.press("Tab")
    before = recording.window.pixels()
    recording.press("alt+n")
    wait_until(lambda: recording.window.pixels() != before, "the tab is shown")


def change(recording, key, act):
    """Does what flips a setting, and nothing but it."""
    before = stored(recording)
    act()
    wait_until(lambda: stored(recording) == {**before, key: not before[key]}, lambda: f"{key} changes; {stored(recording)}")
    assert recording.desktop.preferences.read_by_another_program() == stored(recording)


@pytest.mark.short
def test_every_box_is_changed_by_space_and_stays_changed_at_the_next_start(recording):
    open_tab_by_keys(recording)
    for key in CHECK_BOXES:
        change(recording, key, lambda: recording.press("space"))
        recording.press("Tab")
    # Where the style is, which is saved with the next change.
    before = recording.window.pixels()
    recording.press("space")
    wait_until(lambda: recording.window.pixels() != before, "the other style is shown")
    assert holds_for(lambda: stored(recording)[STYLE] == 0, 0.3)
    recording.press("Tab")
    recording.press("Return")
    recording.desktop.brimwick.wait_until_preferences_are_hidden()

    chosen = {key: stored(recording)[key] for key in CHECK_BOXES}
    assert recording.desktop.brimwick.end() == 0
    recording.desktop.brimwick.start()
    recording.show()
    open_tab_by_keys(recording)
    first = next(iter(CHECK_BOXES))
    change(recording, first, lambda: recording.press("space"))
    assert {key: stored(recording)[key] for key in CHECK_BOXES} == {**chosen, first: not chosen[first]}


def test_every_box_and_the_style_are_changed_by_mouse(recording):
    mouse = recording.desktop.mouse
    before = recording.window.pixels()
    mouse.click(*recording.window.notifications_tab())
    wait_until(lambda: recording.window.pixels() != before, "the tab is shown")
    for key, place in CHECK_BOXES.items():
        change(recording, key, lambda place=place: mouse.click(*recording.window.at(place)))
    for place, style in ((ROTATE, 1), (PULSE, 0)):
        mouse.click(*recording.window.at(place))
        wait_until(lambda style=style: stored(recording)[STYLE] == style, "the style is saved")
    # The keyboard has followed: Space acts on the style.
    before = recording.window.pixels()
    recording.press("space")
    wait_until(lambda: recording.window.pixels() != before, "the other style is shown")


def test_shift_tab_goes_from_the_first_box_to_the_close_button(recording):
    open_tab_by_keys(recording)
    recording.press("shift+Tab")
    recording.press("space")
    recording.desktop.brimwick.wait_until_preferences_are_hidden()
