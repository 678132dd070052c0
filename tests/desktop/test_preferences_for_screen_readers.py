"""What the accessibility bus tells of the preferences window: a role and a name for every control."""

import pytest

from filing import Filing
from harness import wait_until
from harness.accessibility import ENVIRONMENT, FOCUSABLE, FOCUSED, Accessibility
from harness.preferences_window import TITLE

# By which a user acts.
ROLES = {"hotkey field", "list", "list item", "push button", "check box", "radio button", "page tab"}
FIELDS = ["Hot key to move files", "Hot key to copy files", "Hot key to open a folder"]


class ScreenReader:
    def __init__(self, desktop):
        self._accessibility = Accessibility(desktop)
        desktop.brimwick.start(environment=ENVIRONMENT)
        desktop.brimwick.run()
        desktop.brimwick.wait_for_preferences_window()

    def controls(self) -> list:
        return self._accessibility.controls(TITLE)

    def wait_for(self, name):
        return self._accessibility.wait_for(TITLE, name)

    def focused(self) -> list:
        # The tab that is shown counts as focused in its bar.
        return [each.name for each in self.controls() if FOCUSED in each.states and each.role != "page tab"]

    def check_that_all_have_a_role_and_a_name(self, at_least: int):
        acted_on = [each for each in self.controls() if each.role in ROLES or FOCUSABLE in each.states]
        assert len(acted_on) >= at_least
        assert [each for each in acted_on if each.role not in ROLES or not each.name] == []


@pytest.fixture
def reader(desktop):
    Filing(desktop)
    return ScreenReader(desktop)


def test_every_control_of_both_tabs_has_a_role_and_a_name(desktop, reader):
    assert (reader.controls()[0].role, reader.controls()[0].name) == ("dialog", TITLE)
    # Fields, list with its two folders, five buttons, box, tabs.
    reader.check_that_all_have_a_role_and_a_name(at_least=14)
    desktop.mouse.click(*reader.wait_for("Notifications").middle)
    reader.wait_for("Pulse")
    # Twelve boxes, two styles, close button, tabs.
    reader.check_that_all_have_a_role_and_a_name(at_least=17)


def test_a_field_tells_its_hot_key_and_where_the_focus_goes(desktop, reader):
    assert [reader.wait_for(name).description for name in FIELDS] == ["^⌘M", "^⌘P", "^⌘O"]
    for name in [*FIELDS, "Indexed folders", "Close"]:
        wait_until(lambda: name in reader.focused(), lambda: f"{name} has the focus, not {reader.focused()}")
        desktop.keyboard.tap("Tab")


def test_an_empty_list_tells_what_to_do(desktop):
    desktop.preferences.write([])
    reader = ScreenReader(desktop)
    assert reader.wait_for("Indexed folders").description.startswith("No folders are indexed yet. Choose \"Add...\"")
