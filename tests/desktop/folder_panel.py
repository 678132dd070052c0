"""The panel in which a folder to index is chosen."""

from harness import wait_until
from harness.brimwick import WINDOW_CLASS

TITLE = "Add an Indexed Folder"


def listed_folders(desktop) -> list:
    return desktop.preferences.read()["IndexedFolders"]


def add_folder_in_panel(desktop, folder):
    """Chooses a folder in the panel that is open, by typing its path."""
    panel = desktop.windows.wait_for(WINDOW_CLASS, TITLE)
    desktop.windows.wait_until_active(panel)
    desktop.keyboard.type(str(folder))
    desktop.keyboard.tap("Return")
    wait_until(lambda: str(folder) in listed_folders(desktop), lambda: f"{folder} is saved, not {listed_folders(desktop)}")
    wait_until(lambda: not panel.is_viewable(), "the panel is gone")
    desktop.brimwick.wait_for_preferences_window()
