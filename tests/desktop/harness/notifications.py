"""What the desktop's notification service was asked to show."""

import html
import json
import re
import shutil
from dataclasses import dataclass
from pathlib import Path

from .account import Account
from .processes import Children
from .waiting import wait_until

TIME = re.compile(r"(1[0-2]|[1-9]):[0-5][0-9]:[0-5][0-9] (AM|PM)")


@dataclass(frozen=True)
class Notification:
    """One call: `time` and `text` are the two parts of its body, the markup's escapes taken back."""

    summary: str
    time: str
    text: str
    body: str
    hints: dict

    @staticmethod
    def from_call(call: dict) -> "Notification":
        time, _, text = call["body"].partition("\n")
        return Notification(call["summary"], time, html.unescape(text), call["body"], call["hints"])

    def is_well_formed(self) -> bool:
        """Whether the summary is the program's name and the first line a time such as 9:05:07 PM."""
        return self.summary == "Brimwick" and TIME.fullmatch(self.time) is not None


class Notifications:
    """The service itself, started on the desktop's bus, and what arrived there."""

    def __init__(self, children: Children, account: Account):
        program = account.base / "notification_sink.py"
        shutil.copyfile(Path(__file__).with_name("notification_sink.py"), program)
        self._log = account.base / "notifications.jsonl"
        self._log.touch()
        account.give(self._log)
        service = children.start("notifications", ["/usr/bin/python3", program, self._log])

        def ready():
            if not service.is_running():
                raise RuntimeError(f"the notification service ended at once: {service.stderr()}")
            return service.stdout() == "ready\n"

        wait_until(ready, "the notification service is there")

    def all(self) -> list:
        """Every notification so far, in the order of arrival."""
        lines = self._log.read_text(encoding="utf-8").split("\n")[:-1]
        return [Notification.from_call(json.loads(line)) for line in lines]

    def texts(self) -> list:
        return [notification.text for notification in self.all()]

    def wait_for(self, text: str, timeout=10.0) -> Notification:
        """Waits for a notification with exactly this text."""

        def arrived():
            return next((notification for notification in self.all() if notification.text == text), None)

        return wait_until(arrived, lambda: f"notification {text!r}; arrived: {self.texts()!r}", timeout)
