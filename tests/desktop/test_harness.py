"""The desktop itself, without Brimwick."""

import os
import subprocess
import time

import pytest

from harness import Desktop, wait_until
from harness.appearance import AppearanceWatch
from harness.waiting import WaitedTooLong

NAMES = {"plain.txt": b"1", "two\nlines.txt": b"2", "漢字.txt": b"3"}


@pytest.mark.short
def test_the_file_manager_selects_files_with_odd_names(desktop):
    (inbox,) = desktop.make_folder("inbox")
    files = desktop.make_files(inbox, NAMES)
    desktop.file_manager.open(inbox)
    desktop.file_manager.select_all(files)
    assert sorted(desktop.file_manager.selection()) == sorted(os.fsencode(path) for path in files)


def test_the_file_manager_selects_some_of_the_files(desktop):
    (inbox,) = desktop.make_folder("inbox")
    files = desktop.make_files(inbox, {"a": b"", "b": b"", "c": b""})
    desktop.file_manager.open(inbox)
    desktop.file_manager.select_first(2, files[:2])


def test_a_file_that_is_not_there_cannot_be_selected(desktop):
    (inbox,) = desktop.make_folder("inbox")
    desktop.make_files(inbox, {"a": b""})
    desktop.file_manager.open(inbox)
    with pytest.raises(WaitedTooLong):
        desktop.file_manager.select_all([inbox / "b"], timeout=0.5)


def test_programs_run_as_an_ordinary_user_with_the_home_of_the_test(desktop):
    program = "import os, pwd; print(os.getuid(), pwd.getpwuid(os.getuid()).pw_dir)"
    answer = desktop.children.run(["/usr/bin/python3", "-c", program]).stdout.decode().split()
    assert answer == [str(desktop.account.uid), str(desktop.home)]
    assert desktop.account.uid != 0


def test_keys_reach_the_terminal_as_they_are_typed(desktop):
    desktop.terminal.open()
    desktop.keyboard.type("Move It!")
    desktop.keyboard.chord("ctrl+c")
    wait_until(lambda: desktop.terminal.received() == b"Move It!\x03", desktop.terminal.received)


def test_a_held_key_repeats_and_is_let_go(desktop):
    desktop.terminal.open()
    with desktop.keyboard.holding("x"):
        wait_until(lambda: len(desktop.terminal.received()) > 5, "the key repeats")
        assert desktop.keyboard.held() == [desktop.keyboard.code("x")]
    assert desktop.keyboard.held() == []


def test_the_clipboard_gives_back_what_it_holds(desktop):
    picture = bytes(range(256)) * 4096
    desktop.clipboard.hold(b"words")
    assert desktop.clipboard.read() == b"words"
    desktop.clipboard.hold(picture, "image/png")
    assert desktop.clipboard.read("image/png") == picture
    assert desktop.clipboard.read() is None


def test_notifications_are_written_down(desktop):
    _notify(desktop, "Brimwick", "9:05:07 PM\na &amp; b\nc")
    notification = desktop.notifications.wait_for("a & b\nc")
    assert notification.is_well_formed()
    assert not _from_body(desktop, "09:05:07 PM\nx").is_well_formed()
    assert not _from_body(desktop, "21:05:07\nx").is_well_formed()


def test_a_window_that_appears_is_seen_painted_and_focused(desktop):
    desktop.file_manager.open(desktop.home)
    window = desktop.terminal.open()
    watch = AppearanceWatch(desktop.display.get_display_name(), window)
    window.set_mapped(False)
    wait_until(lambda: not window.is_viewable() and desktop.windows.active() != window, "the window is hidden")
    watch.forget()
    with pytest.raises(WaitedTooLong):
        watch.wait(timeout=0.3)
    started = time.monotonic()
    window.set_mapped(True)
    times = watch.wait()
    assert all(started < moment < time.monotonic() for moment in times)
    assert desktop.windows.active() == window


def test_nothing_is_left_when_a_desktop_is_closed():
    with Desktop() as desktop:
        (inbox,) = desktop.make_folder("inbox")
        desktop.file_manager.open(inbox)
        inbox.chmod(0o500)
        marker = f"HOME={desktop.home}".encode()
        assert _processes_with(marker)
    assert not desktop.account.base.exists()
    wait_until(lambda: not _processes_with(marker), "every program ended")


@pytest.mark.desktop(bus=False, tray=False)
def test_a_desktop_may_lack_bus_and_tray(desktop):
    assert desktop.notifications is None
    with pytest.raises(subprocess.CalledProcessError):
        _call(desktop, "org.freedesktop.DBus", "/", "org.freedesktop.DBus.GetId").check_returncode()


def _from_body(desktop, body):
    _notify(desktop, "Brimwick", body)
    wait_until(lambda: desktop.notifications.all()[-1].body == body, "the notification arrived")
    return desktop.notifications.all()[-1]


def _notify(desktop, summary, body):
    name = "org.freedesktop.Notifications"
    arguments = [f"string:{summary}", "uint32:0", "string:", f"string:{summary}", f"string:{body}"]
    arguments += ["array:string:", "dict:string:string:", "int32:-1"]
    _call(desktop, name, "/org/freedesktop/Notifications", f"{name}.Notify", *arguments)


def _call(desktop, destination, path, method, *arguments):
    return desktop.children.run(
        ["dbus-send", "--session", "--print-reply", f"--dest={destination}", path, method, *arguments]
    )


def _processes_with(variable):
    found = []
    for process in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{process}/environ", "rb") as file:
                if variable in file.read().split(b"\0"):
                    found.append(int(process))
        except OSError:
            continue
    return found
