"""Desktops that lack something: the job is done all the same, and the texts go to stderr."""

import pytest

from filing import Filing, contents
from harness.picker import MOVE, OPEN
from harness.waiting import wait_until

TEXTS = ("Index initialization complete.", "Moved file a.txt to folder")


@pytest.mark.desktop(notifications=False)
@pytest.mark.expected_stderr(*TEXTS)
def test_without_a_notification_service_files_are_moved_and_the_texts_are_on_stderr(filing):
    _move(filing)


@pytest.mark.desktop(notifications=False)
@pytest.mark.expected_stderr(*TEXTS)
def test_without_a_bus_files_are_moved_and_the_texts_are_on_stderr(desktop):
    filing = Filing(desktop)
    # The file manager cannot do without one.
    desktop.brimwick.start(environment={"DBUS_SESSION_BUS_ADDRESS": f"unix:path={desktop.home}/no-bus"})
    _move(filing)


@pytest.mark.desktop(tray=False)
@pytest.mark.expected_stderr("tray")
def test_without_a_tray_files_are_moved_and_it_is_said_once(filing):
    filing.show_selected({"a.txt": b"a"})
    filing.invoke(MOVE)
    filing.choose("taxes")
    filing.confirm()
    filing.desktop.notifications.wait_for(f"Moved file a.txt to folder {filing.cabinet / 'Taxes'}")
    assert contents(filing.cabinet / "Taxes") == {"a.txt": b"a"}
    said = [text for text in filing.desktop.notifications.texts() if "tray" in text]
    said += [line for line in filing.desktop.brimwick.process.stderr().splitlines() if "tray" in line]
    assert len(said) == 1


@pytest.mark.desktop(tray=False)
@pytest.mark.expected_stderr("tray")
def test_without_a_tray_another_start_leads_to_the_preferences(filing):
    brimwick = filing.desktop.brimwick
    done = brimwick.run()
    assert done.returncode == 0
    assert done.stderr.decode().splitlines() == ["brimwick: already running; its preferences are shown"]
    brimwick.wait_for_preferences_window()
    # Once more, from behind another window.
    filing.show_selected({"a.txt": b"a"})
    assert brimwick.run().returncode == 0
    brimwick.wait_for_preferences_window()


def test_without_a_running_file_manager_open_starts_the_usual_one(filing):
    assert filing.desktop.file_manager.windows() == []
    filing.invoke(OPEN)
    filing.choose("taxes")
    filing.desktop.keyboard.tap("Return")
    filing.desktop.windows.wait_for("pcmanfm-qt", "Taxes", timeout=20)


@pytest.mark.parametrize("environment, said", [
    ({"DISPLAY": ":987"}, "brimwick: the display :987 cannot be opened"),
    ({"DISPLAY": ""}, "brimwick: there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set"),
])
def test_without_a_display_one_line_says_so(desktop, environment, said):
    done = desktop.brimwick.run(environment=environment)
    assert done.returncode == 1
    assert done.stderr.decode().splitlines() == [said]


def _move(filing):
    filing.show_selected({"a.txt": b"a"})
    filing.invoke(MOVE)
    filing.choose("taxes")
    filing.confirm()
    process = filing.desktop.brimwick.process
    wait_until(lambda: TEXTS[1] in process.stderr(), lambda: f"the text on stderr; there is {process.stderr()!r}")
    assert contents(filing.cabinet / "Taxes") == {"a.txt": b"a"}
    assert contents(filing.inbox) == {}
    filing.wait_until_files_are_back_in_front()
