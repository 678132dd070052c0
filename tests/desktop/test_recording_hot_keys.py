"""New hot keys, recorded in the preferences window with real keys."""

import pytest
from Xlib import X

from harness import wait_until
from harness.brimwick import READY
from harness.picker import COPY, HOT_KEYS, MOVE, OPEN
from harness.waiting import holds_for
from recording import Recording, grabbed_by_another_program
from window_managers import under_every_window_manager

H, W, M = "4", "13", "46"
SUPER, NUM_LOCK = X.Mod4Mask, X.Mod2Mask


@pytest.fixture
def recording(filing):
    return Recording(filing)


@pytest.mark.short
def test_a_recorded_hot_key_works_at_once_and_after_the_next_start(recording):
    recording.press("super+shift+h")
    recording.wait_until_stored(H)
    # Super and Shift, the left ones.
    assert recording.stored()[1] == 0x12010A
    assert not recording.window.shows_error(MOVE)
    recording.close()
    recording.check_that_it_opens_the_picker("super+shift+h")
    recording.check_that_it_is_no_hot_key(HOT_KEYS[MOVE])

    assert recording.desktop.brimwick.end() == 0
    recording.desktop.brimwick.start(wait=False)
    told = recording.desktop.notifications
    wait_until(lambda: told.texts().count(READY) == 2, lambda: f"it is ready again; it told {told.texts()}")
    recording.check_that_it_opens_the_picker("super+shift+h")


@pytest.mark.parametrize("combination", ["super+shift+a", "h", "F5", "shift+F5", "ctrl+1"])
def test_a_key_that_cannot_be_a_hot_key_is_refused(recording, combination):
    before = recording.stored()
    recording.press(combination)
    recording.wait_for_error()
    assert recording.stored() == before
    recording.close()
    recording.check_that_it_opens_the_picker(HOT_KEYS[MOVE])


def test_shift_alone_is_enough(recording):
    recording.press("shift+h")
    recording.wait_until_stored(H)
    assert recording.stored()[1] & 0x1E0000 == 0x20000


def test_the_right_keys_of_the_modifiers_are_stored_as_such(recording):
    recording.press("Control_R+Super_R+h")
    recording.wait_until_stored(H)
    assert recording.stored()[1] == 0x142110
    recording.close()
    recording.check_that_it_opens_the_picker("ctrl+super+h")


@under_every_window_manager
def test_a_hot_key_of_another_mode_is_a_duplicate(recording, window_manager):
    recording.go_to(OPEN)
    recording.press(HOT_KEYS[MOVE])
    recording.wait_for_error(OPEN)
    assert recording.stored(OPEN)[0] == "31"
    assert recording.desktop.brimwick.picker() is None
    recording.close()
    recording.check_that_it_opens_the_picker(HOT_KEYS[MOVE])


@under_every_window_manager
def test_a_hot_key_of_another_mode_is_a_duplicate_however_long_it_is_held(recording, window_manager):
    recording.go_to(OPEN)
    with recording.desktop.keyboard.holding(*HOT_KEYS[MOVE].split("+")):
        assert holds_for(lambda: recording.desktop.brimwick.picker() is None, 0.8)
    recording.wait_for_error(OPEN)
    assert recording.desktop.brimwick.picker() is None


@under_every_window_manager
def test_a_combination_of_another_program_leaves_the_mode_without_a_hot_key(recording, window_manager):
    # With one lock alone, so that the press without it comes to the window.
    with grabbed_by_another_program(recording.desktop, "h", SUPER | NUM_LOCK):
        recording.press("super+h")
        recording.wait_for_error()
        assert recording.stored()[0] == M
        recording.close()
        recording.check_that_it_is_no_hot_key(HOT_KEYS[MOVE])
    recording.show()
    recording.press("super+h")
    recording.wait_until_stored(H)
    recording.close()
    recording.check_that_it_opens_the_picker("super+h")


def test_ctrl_w_closes_outside_the_fields(recording):
    for _ in range(3):
        recording.press("Tab")
    recording.press("ctrl+w")
    recording.desktop.brimwick.wait_until_preferences_are_hidden()


def test_ctrl_w_is_recorded_in_a_field_and_super_w_closes(recording):
    recording.press("ctrl+w")
    recording.wait_until_stored(W)
    recording.press("super+w")
    recording.desktop.brimwick.wait_until_preferences_are_hidden()


def test_a_click_chooses_the_field(recording):
    before = recording.window.shown_hot_key(COPY)
    recording.desktop.mouse.click(*recording.window.field(COPY))
    recording.press("ctrl+alt+h")
    recording.wait_until_stored(H, COPY)
    wait_until(lambda: recording.window.shown_hot_key(COPY) != before, "the field shows the new hot key")
    assert recording.stored()[0] == M


def test_a_hot_key_held_down_while_it_is_recorded_is_no_duplicate(recording):
    with recording.desktop.keyboard.holding("super", "shift", "h"):
        recording.wait_until_stored(H)
        assert holds_for(lambda: not recording.window.shows_error(MOVE), 1.5)
    assert holds_for(lambda: not recording.window.shows_error(MOVE), 0.5)
    assert recording.desktop.brimwick.picker() is None


def test_super_q_quits_from_a_field(recording):
    recording.press("super+q")
    assert recording.desktop.brimwick.process.wait(5) == 0
