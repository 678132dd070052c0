"""The menu of the icon in the tray, by mouse and keys."""

import os

import pytest

from filing import Filing, contents
from harness import wait_until
from harness.brimwick import WINDOW_CLASS
from harness.picker import COPY, MOVE
from harness.tray import TINT2, XFCE4_PANEL, TrayMenu

# The items of the menu in their order, as far as they are enabled: Move Files, Copy Files and Open Folder come first.
# Undo, Redo or, when there is nothing to undo or redo, Preferences follow.
MOVE_FILES, COPY_FILES, OPEN_FOLDER, FIRST_AFTER, SECOND_AFTER = 1, 2, 3, 4, 5
# Without anything to undo or redo.
HELP, CHECK_FOR_UPDATE, ABOUT, QUIT = 5, 6, 7, 8

in_every_tray = pytest.mark.parametrize(
    "tray", [pytest.param(host, marks=pytest.mark.desktop(tray=host)) for host in (TINT2, XFCE4_PANEL)]
)


@pytest.fixture
def menu(filing):
    return TrayMenu(filing.desktop)


def file_away(filing, mode, text, row=0):
    filing.invoke(mode)
    filing.choose(text, row)
    filing.confirm()


def wait_for_contents(folder, expected):
    wait_until(lambda: contents(folder) == expected, lambda: f"{folder.name} holds {expected}: {contents(folder)}")


@in_every_tray
def test_a_move_is_undone_and_redone(filing, menu, tray):
    files = {"a.txt": b"a", "b.txt": b"b"}
    filing.show_selected(files)
    file_away(filing, MOVE, "taxes")
    wait_for_contents(filing.cabinet / "Taxes", files)
    menu.choose(FIRST_AFTER)
    wait_for_contents(filing.inbox, files)
    wait_for_contents(filing.cabinet / "Taxes", {})
    # Now the item there is Redo.
    menu.choose(FIRST_AFTER)
    wait_for_contents(filing.cabinet / "Taxes", files)
    moved = [f"Moved file {name} to folder {filing.cabinet / 'Taxes'}" for name in files]
    back = [f"Moved file {name} to folder {filing.inbox}" for name in files]
    wait_until(lambda: filing.action_texts() == [*moved, *back, *moved], lambda: f"told: {filing.action_texts()}")


def test_two_moves_are_undone_the_last_one_first_and_the_undone_one_is_redone(filing, menu):
    filing.show_selected({"a.txt": b"a"})
    file_away(filing, MOVE, "taxes")
    wait_for_contents(filing.cabinet / "Taxes", {"a.txt": b"a"})
    filing.desktop.file_manager.select_all(filing.desktop.make_files(filing.inbox, {"b.txt": b"b"}))
    file_away(filing, MOVE, "letters")
    wait_for_contents(filing.attic / "Letters", {"b.txt": b"b"})
    menu.choose(FIRST_AFTER)
    wait_for_contents(filing.inbox, {"b.txt": b"b"})
    assert contents(filing.cabinet / "Taxes") == {"a.txt": b"a"}
    menu.choose(SECOND_AFTER)
    wait_for_contents(filing.attic / "Letters", {"b.txt": b"b"})


def test_an_undone_copy_goes_to_the_trash_and_its_redo_copies_nothing(filing, menu):
    filing.show_selected({"a.txt": b"a"})
    file_away(filing, COPY, "taxes")
    wait_for_contents(filing.cabinet / "Taxes", {"a.txt": b"a"})
    menu.choose(FIRST_AFTER)
    wait_for_contents(filing.cabinet / "Taxes", {})
    wait_for_contents(filing.desktop.home / ".Trash", {"a.txt": b"a"})
    undone = "Undid previous copy; trashed file a.txt"
    wait_until(lambda: undone in filing.action_texts(), lambda: f"told: {filing.action_texts()}")
    told = len(filing.action_texts())
    # Redo, and then Undo, which is there again: neither has anything to do.
    menu.choose(FIRST_AFTER)
    menu.choose(FIRST_AFTER)
    menu.choose(SECOND_AFTER)
    filing.desktop.brimwick.wait_for_preferences_window()
    assert contents(filing.cabinet / "Taxes") == {}
    assert contents(filing.inbox) == {"a.txt": b"a"}
    assert len(filing.action_texts()) == told


@in_every_tray
def test_without_anything_to_undo_or_redo_the_preferences_follow(filing, menu, tray):
    menu.choose(FIRST_AFTER)
    filing.desktop.brimwick.wait_for_preferences_window()


@in_every_tray
def test_the_items_open_the_picker(filing, menu, tray):
    filing.show_selected({"a.txt": b"a"})
    menu.choose(OPEN_FOLDER)
    filing.desktop.brimwick.wait_for_picker()
    filing.desktop.keyboard.tap("Escape")
    filing.desktop.brimwick.wait_until_hidden()
    filing.wait_until_files_are_back_in_front()
    menu.choose(MOVE_FILES)
    filing.desktop.brimwick.wait_for_picker()
    filing.choose("taxes")
    filing.confirm()
    filing.wait_for_action("Moved", ["a.txt"], filing.cabinet / "Taxes")


def test_files_are_copied_from_the_menu(filing, menu):
    filing.show_selected({"a.txt": b"a"})
    menu.choose(COPY_FILES)
    filing.desktop.brimwick.wait_for_picker()
    filing.choose("taxes")
    filing.confirm()
    filing.wait_for_action("Copied", ["a.txt"], filing.cabinet / "Taxes")


def test_help_opens_the_page_that_ships_in_the_browser(desktop):
    asked = desktop.home / "asked of the browser"
    browser = desktop.home / "bin" / "xdg-open"
    browser.parent.mkdir()
    browser.write_text(f'#!/bin/sh\necho "$@" >> "{asked}"\n')
    browser.chmod(0o755)
    Filing(desktop)
    desktop.brimwick.start(environment={"PATH": f"{browser.parent}:{os.environ['PATH']}"})
    TrayMenu(desktop).choose(HELP)
    page = wait_until(lambda: asked.exists() and asked.read_text().strip(), "the browser was asked for a page")
    assert page.startswith("file://") and page.endswith("/share/brimwick/help.html")
    assert "<title>Brimwick Help</title>" in open(page.removeprefix("file://"), encoding="utf-8").read()


def test_check_for_update_says_where_updates_come_from(filing, menu):
    menu.choose(CHECK_FOR_UPDATE)
    filing.desktop.notifications.wait_for("Updates of Brimwick come with your system's packages.")


@in_every_tray
def test_about_shows_the_version_and_goes_with_escape(filing, menu, tray):
    menu.choose(ABOUT)
    windows = filing.desktop.windows
    windows.wait_until_active(windows.wait_for(WINDOW_CLASS, "About Brimwick"))
    filing.desktop.keyboard.tap("Escape")
    wait_until(lambda: not windows.matching(WINDOW_CLASS, "About Brimwick"), "the window about Brimwick is gone")


@in_every_tray
def test_quit_ends_the_program(filing, menu, tray):
    menu.choose(QUIT)
    assert filing.desktop.brimwick.process.wait(10) == 0
