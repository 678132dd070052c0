"""The picker's size: of the whole window with its title bar, and the same after any number of openings."""

import pytest

from filing import Filing
from harness import wait_until
from harness.mouse import RIGHT
from harness.picker import MOVE, OPEN

# The Open layout is so much shorter.
DIFFERENCE = 98


@pytest.fixture
def sized(desktop, request):
    """Brimwick with a stored size."""
    width, height = getattr(request, "param", (520, 572))
    filing = Filing(desktop)
    desktop.preferences.write([filing.cabinet], WickWindowWidth=str(width), WickWindowHeight=str(height))
    desktop.brimwick.start()
    filing.show_selected({"a.txt": b"a"})
    return filing


def test_twenty_openings_leave_the_size_alone_in_both_layouts(sized):
    for opening in range(20):
        for mode, height in ((MOVE, 572), (OPEN, 572 - DIFFERENCE)):
            sized.invoke(mode)
            _wait_for_frame(sized, 520, height)
            _close(sized)
            assert _stored(sized) == ("520", "572"), f"opening {opening} in {mode} mode"


@pytest.mark.parametrize("scale", ["1.25", "1.5", "2"])
def test_twenty_openings_leave_the_size_alone_on_a_scaled_screen(desktop, scale):
    filing = Filing(desktop)
    desktop.preferences.write([filing.cabinet], WickWindowWidth="520", WickWindowHeight="572")
    desktop.brimwick.start(environment={"QT_SCALE_FACTOR": scale})
    filing.show_selected({"a.txt": b"a"})
    for opening in range(20):
        for mode in (MOVE, OPEN):
            filing.invoke(mode)
            _close(filing)
            assert _stored(filing) == ("520", "572"), f"opening {opening} in {mode} mode"


@pytest.mark.parametrize(
    "sized, mode, height",
    [
        ((520, 500), MOVE, 550),
        ((520, 500), OPEN, 422),
        ((520, 900), MOVE, 900),
        ((520, 900), OPEN, 802),
        ((600, 700), MOVE, 700),
    ],
    indirect=["sized"],
)
def test_the_stored_height_is_laid_out_for_the_mode(sized, mode, height):
    width = int(_stored(sized)[0])
    sized.invoke(mode)
    _wait_for_frame(sized, width, height)


@pytest.mark.parametrize("mode, more", [(MOVE, 0), (OPEN, DIFFERENCE)])
def test_a_resized_window_is_stored_and_comes_back(sized, mode, more):
    sized.invoke(mode)
    _wait_for_frame(sized, 520, 572 - more)
    before = sized.desktop.brimwick.picker().frame
    _pull_corner(sized, mode, 80, 60)
    _close(sized)
    assert _stored(sized) == (str(before.width + 80), str(before.height + 60 + more))
    sized.invoke(mode)
    _wait_for_frame(sized, before.width + 80, before.height + 60)


def test_the_picker_is_centred_at_the_top_of_the_screen(sized):
    sized.invoke(MOVE)
    _wait_for_frame(sized, 520, 572)
    frame = sized.desktop.brimwick.picker().frame
    assert abs(frame.x + frame.width / 2 - 1280) <= 2
    assert frame.y == 0


def _pull_corner(sized, mode, right, down):
    """Resizes by dragging with Alt and the right button held."""
    picker, mouse = sized.desktop.brimwick.picker(), sized.desktop.mouse
    before = picker.frame
    x, y = sized.places(mode).lower_right_corner()
    with sized.desktop.keyboard.holding("alt"):
        mouse.move(x, y)
        mouse.press(RIGHT)

        def pulled():
            # As a hand does, until the window manager has noticed.
            mouse.move(x + right // 2, y + down // 2)
            mouse.move(x + right, y + down)
            return (picker.frame.width, picker.frame.height) == (before.width + right, before.height + down)

        wait_until(pulled, lambda: f"the window is larger; it is {picker.frame}")
        mouse.release(RIGHT)
    # Until the window manager has noticed that, it keeps the keys.
    sized.desktop.keyboard.wait_until_free()


def _wait_for_frame(sized, width, height):
    def size():
        frame = sized.desktop.brimwick.picker().frame
        return frame.width, frame.height

    wait_until(lambda: size() == (width, height), lambda: f"the frame is {width}x{height}; it is {size()}", 3)


def _close(sized):
    sized.desktop.keyboard.tap("Escape")
    sized.desktop.brimwick.wait_until_hidden()
    sized.wait_until_files_are_back_in_front()


def _stored(sized):
    stored = sized.desktop.preferences.read()
    return stored["WickWindowWidth"], stored["WickWindowHeight"]
