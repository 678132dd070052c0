"""Files that lie on the desktop itself."""

from filing import contents
from harness.picker import MOVE


def test_files_selected_on_the_desktop_in_front_are_moved(filing):
    files = _select_on_desktop(filing)
    _move(filing, files)


def test_files_selected_on_the_desktop_are_taken_when_the_window_in_front_has_none(filing):
    files = _select_on_desktop(filing)
    (empty,) = filing.desktop.make_folder("empty")
    filing.desktop.file_manager.open(empty)
    _move(filing, files)


def _select_on_desktop(filing):
    (folder,) = filing.desktop.make_folder("Desktop")
    files = filing.desktop.make_files(folder, {"a.txt": b"a", "b.txt": b"b"})
    icons = filing.desktop.file_manager.show_desktop_icons()
    # Away from the icons, which line up from the upper left.
    filing.desktop.mouse.click(icons.client.width - 200, icons.client.height // 2)
    filing.desktop.windows.wait_until_active(icons)
    filing.desktop.file_manager.select_all(files)
    return files


def _move(filing, files):
    names = {file.name: file.read_bytes() for file in files}
    filing.invoke(MOVE)
    filing.choose("taxes")
    filing.confirm()
    filing.wait_for_action("Moved", names, filing.cabinet / "Taxes")
    assert contents(filing.cabinet / "Taxes") == names
    assert not any(file.exists() for file in files)
