"""brimwick search, with and without a running Brimwick: the same folders in the same order."""

import base64
import fcntl
import json
import os
import signal
import struct
import subprocess
import termios

import pytest

from filing import Filing
from harness import wait_until

PAGE = os.sysconf("SC_PAGE_SIZE")
NO_DESKTOP = {"DISPLAY": None, "WAYLAND_DISPLAY": None, "DBUS_SESSION_BUS_ADDRESS": None, "QT_QPA_PLATFORM": None}


@pytest.fixture
def folders(desktop):
    """The folders of `Filing`, among them some with odd names; Brimwick does not run yet."""
    filing = Filing(desktop)
    for name in (b"Attic/resume \xff", b"Cabinet/two\nlines of a resume", b"Cabinet/.git/resume", b"Cabinet/Re.app/resume"):
        os.makedirs(os.fsencode(desktop.home) + b"/" + name)
    (desktop.home / "Cabinet/link to a resume").symlink_to(filing.resumes)
    for number in range(2000):
        (filing.attic / f"old/Number {number % 100}/{number}").mkdir(parents=True)
    desktop.account.give(desktop.home)
    return filing


def search(desktop, *arguments, environment=None, code=0):
    done = desktop.brimwick.run("search", *arguments, environment=environment)
    assert done.returncode == code, done
    return done


@pytest.mark.short
def test_finds_the_same_with_and_without_a_running_brimwick(desktop, folders):
    requests = [["resume"], ["RESUME", "-0"], ["résumé", "--json"], ["number"], ["1", "--json"]]
    alone = [search(desktop, *request).stdout for request in requests]
    desktop.brimwick.start()
    asked = [search(desktop, *request).stdout for request in requests]
    assert alone == asked

    paths = alone[1].split(b"\0")[:-1]
    attic, cabinet = os.fsencode(folders.attic), os.fsencode(folders.cabinet)
    assert paths == [
        os.fsencode(folders.resume_2024),
        os.fsencode(folders.resumes),
        os.fsencode(folders.resume_elsewhere),
        attic + b"/resume \xff",
        cabinet + b"/two\nlines of a resume",
    ]
    assert alone[0] == b"".join(path + b"\n" for path in paths)
    assert [os.fsencode(entry["path"]) for entry in json.loads(alone[2])] == paths[:3] + [
        attic + "/resume \ufffd".encode(),
        paths[4],
    ]
    assert [base64.b64decode(entry["path_bytes"]) for entry in json.loads(alone[2]) if "path_bytes" in entry] == [paths[3]]
    assert len(alone[3].splitlines()) == 100


def test_a_running_brimwick_answers_from_its_index(desktop, folders):
    desktop.brimwick.start()
    # Who walked now would walk nothing.
    desktop.preferences.write([])
    assert os.fsencode(folders.resumes) + b"\n" in search(desktop, "resume").stdout


def test_works_without_any_desktop_and_makes_nothing(desktop, folders):
    before = sorted(desktop.home.rglob("*"))
    found = search(desktop, "taxes", environment=NO_DESKTOP)
    assert found.stdout == os.fsencode(folders.cabinet / "Taxes") + b"\n"
    assert found.stderr == b""
    assert sorted(desktop.home.rglob("*")) == before


def test_searches_given_folders(desktop, folders):
    desktop.brimwick.start()
    found = search(desktop, "resume", "--in", "Cabinet", "Attic/old")
    assert found.stdout.splitlines()[:3] == [os.fsencode(folder) for folder in folders.folders]
    found = search(desktop, "resume", "--in", "Attic/old", "no such folder", code=1)
    assert found.stdout == os.fsencode(folders.resume_elsewhere) + b"\n"
    assert found.stderr == b"brimwick search: no such folder: No such file or directory\n"


def test_exit_codes_and_reasons(desktop, folders):
    for running in (False, True):
        if running:
            desktop.brimwick.start()
        nothing = search(desktop, "nothing of that kind", code=1)
        assert (nothing.stdout, nothing.stderr) == (b"", b"brimwick search: No folders found.\n")
        assert search(desktop, "nothing of that kind", "--json", code=1).stdout == b"[]\n"
        assert b"Usage: brimwick search" in search(desktop, code=2).stderr
    unknown = desktop.brimwick.run("fly")
    assert unknown.returncode == 2 and b"fly" in unknown.stderr
    assert desktop.brimwick.run("--version").stdout.startswith(b"brimwick ")
    assert desktop.brimwick.run("--help").stdout.startswith(b"Usage: ")


def test_a_reader_that_leaves_ends_the_search_and_harms_nobody(desktop, folders):
    _make_much(desktop, folders)
    for running in (False, True):
        if running:
            desktop.brimwick.start()
        searching = _start(desktop, "search", "folder", stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        searching.stdout.read(10)
        _wait_until_full(searching.stdout)
        searching.stdout.close()
        # As every command ends whose reader leaves; never as if all had been printed.
        assert searching.wait(10) == -signal.SIGPIPE
        assert searching.stderr.read() == b""
    # Who walked now would walk nothing: it is the running one that answers.
    desktop.preferences.write([])
    assert search(desktop, "taxes").stdout
    assert desktop.brimwick.process.is_running()


def test_the_program_quits_while_somebody_reads_slowly(desktop, folders):
    _make_much(desktop, folders)
    desktop.brimwick.start()
    searching = _start(desktop, "search", "folder", stdout=subprocess.PIPE)
    searching.stdout.read(1)
    desktop.brimwick.process.send(signal.SIGTERM)
    assert desktop.brimwick.process.wait(3) == 0
    searching.stdout.read()
    assert searching.wait(10) == 1


def test_control_c_ends_a_search_at_once(desktop, folders):
    # Nobody reads, so that the search can end by the signal only.
    _make_much(desktop, folders)
    searching = _start(desktop, "search", "folder", "--in", folders.attic, stdout=subprocess.PIPE)
    _wait_until_full(searching.stdout)
    searching.send_signal(signal.SIGINT)
    assert searching.wait(3) == -signal.SIGINT


def test_a_full_disk_is_reported(desktop, folders):
    with open("/dev/full", "wb") as full:
        searching = _start(desktop, "search", "resume", stdout=full, stderr=subprocess.PIPE)
        assert searching.wait(10) == 1
    assert b"No space left on device" in searching.stderr.read()


def _make_much(desktop, folders):
    """More paths than pipes and buffers on the way hold."""
    for number in range(6000):
        (folders.attic / f"{'folder ' * 20}{number}").mkdir()
    desktop.account.give(folders.attic)


def _wait_until_full(pipe):
    """Until whoever writes to it can only wait for a reader."""
    capacity = fcntl.fcntl(pipe, fcntl.F_GETPIPE_SZ)

    def held() -> int:
        return struct.unpack("=i", fcntl.ioctl(pipe, termios.FIONREAD, bytes(4)))[0]

    # What was read in part keeps its page.
    wait_until(lambda: held() > capacity - 2 * PAGE, lambda: f"the pipe is full; it holds {held()} of {capacity}")


def _start(desktop, *arguments, **options):
    return desktop.brimwick.open(*arguments, **options)
