"""The usual job: an inbox in the file manager, some folders to file things away in, and Brimwick running."""

from harness import wait_until
from harness.picker import HOT_KEYS, PickerPlaces


class Filing:
    """`resumes`, `resume_2024` and `resume_elsewhere` are what a search for "resume" finds; see `ROWS`."""

    # Names in the order that the picker lists them: by code point, so capitals come first.
    ROWS = ("Résumé 2024", "Résumés", "resume")

    def __init__(self, desktop):
        self.desktop = desktop
        self.inbox, self.cabinet, self.attic = desktop.make_folder("inbox", "Cabinet", "Attic")
        self.resume_2024, self.resumes, self.resume_elsewhere = desktop.make_folder(
            "Cabinet/Résumé 2024", "Cabinet/Résumés", "Attic/old/resume"
        )
        desktop.make_folder("Cabinet/Taxes", "Attic/Letters")
        desktop.preferences.write([self.cabinet, self.attic])
        self.window = None

    @property
    def folders(self):
        """What the rows of a search for "resume" stand for."""
        return (self.resume_2024, self.resumes, self.resume_elsewhere)

    def show_selected(self, contents: dict) -> list:
        """Puts files into the inbox, shows it in the file manager, selects them all; returns their paths."""
        files = self.desktop.make_files(self.inbox, contents)
        self.window = self.desktop.file_manager.open(self.inbox)
        self.desktop.file_manager.select_all(files)
        return files

    def show_unselected(self, contents: dict) -> list:
        files = self.desktop.make_files(self.inbox, contents)
        self.window = self.desktop.file_manager.open(self.inbox)
        return files

    def press_hot_key(self, mode: str):
        self.desktop.keyboard.chord(HOT_KEYS[mode])

    def invoke(self, mode: str):
        """Presses the hot key, waits for the picker and returns its window."""
        self.press_hot_key(mode)
        return self.desktop.brimwick.wait_for_picker()

    def places(self, mode: str) -> PickerPlaces:
        return PickerPlaces(self.desktop.brimwick.picker(), mode)

    def choose(self, text: str, row: int = 0):
        """Types into the search field and goes down to a row of what is found."""
        self.desktop.keyboard.type(text)
        for _ in range(row):
            self.desktop.keyboard.tap("Down")

    def confirm(self):
        self.desktop.keyboard.tap("Return")
        self.desktop.brimwick.wait_until_hidden()

    def wait_until_files_are_back_in_front(self):
        self.desktop.windows.wait_until_active(self.window)

    def wait_for_action(self, verb: str, names, folder):
        """Waits for one notification per file: "Moved file NAME to folder PATH"."""
        expected = sorted(f"{verb} file {name} to folder {folder}" for name in names)

        def arrived():
            return sorted(text for text in self.action_texts()) == expected

        wait_until(arrived, lambda: f"notifications {expected}; arrived: {self.desktop.notifications.texts()}")

    def action_texts(self) -> list:
        """The notifications that do not tell of the index."""
        return [text for text in self.desktop.notifications.texts() if not text.startswith("Index ")]


def contents(folder) -> dict:
    """The files in a folder by name."""
    return {path.name: path.read_bytes() for path in folder.iterdir() if path.is_file()}
