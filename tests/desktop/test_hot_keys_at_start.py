"""Hot keys that the preferences have, but that cannot be."""

from Xlib import X

from filing import Filing
from harness import wait_until
from harness.picker import COPY, HOT_KEYS, MOVE, OPEN
from recording import Recording, grabbed_by_another_program

CONTROL_AND_COMMAND = 0x140109


def test_a_combination_of_another_program_leaves_the_others_and_can_be_recorded_later(desktop):
    filing = Filing(desktop)
    with grabbed_by_another_program(desktop, "p", X.ControlMask | X.Mod4Mask):
        desktop.brimwick.start()
        recording = Recording(filing)
        wait_until_not_active(recording, [COPY])
        recording.close()
        recording.check_that_it_is_no_hot_key(HOT_KEYS[COPY])
        recording.check_that_it_opens_the_picker(HOT_KEYS[MOVE])
        recording.check_that_it_opens_the_picker(HOT_KEYS[OPEN])
    recording.show()
    recording.go_to(COPY)
    recording.press(HOT_KEYS[COPY])
    recording.wait_until_works(COPY)
    recording.close()
    recording.check_that_it_opens_the_picker(HOT_KEYS[COPY])


def test_codes_that_are_no_keys_and_one_combination_of_two_modes_are_shown_as_not_active(desktop):
    filing = Filing(desktop)
    desktop.preferences.write(
        [filing.cabinet],
        HotKeyCode=str(31 + 0x10000),
        CopyModeHotKeyCode="31",
        CopyModeHotKeyModifierFlags=str(CONTROL_AND_COMMAND | 1 << 62),
    )
    desktop.brimwick.start()
    # Copy is applied before Open.
    recording = Recording(filing)
    wait_until_not_active(recording, [MOVE, OPEN])
    recording.press("super+shift+h")
    recording.wait_until_works(MOVE)
    wait_until_not_active(recording, [OPEN])
    recording.close()
    recording.check_that_it_opens_the_picker("super+shift+h")
    recording.check_that_it_opens_the_picker(HOT_KEYS[OPEN])


def wait_until_not_active(recording, modes):
    def shown():
        return [mode for mode in (MOVE, COPY, OPEN) if recording.window.shows_note(mode)]

    wait_until(lambda: shown() == modes, lambda: f"{modes} are shown as not active; shown are {shown()}")
