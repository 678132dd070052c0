"""Waiting on conditions."""

import time

INTERVAL = 0.01


class WaitedTooLong(AssertionError):
    """A condition that was waited for did not come true in time."""


def wait_until(condition, what, timeout=10.0):
    """Polls `condition` until it answers something true, and returns that.

    `what` names the condition in words, or is a callable that describes what was found instead; it becomes the
    text of the WaitedTooLong that is raised after `timeout` seconds.
    """
    deadline = time.monotonic() + timeout
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() >= deadline:
            raise WaitedTooLong(f"after {timeout:g} s still not: {what() if callable(what) else what}")
        time.sleep(INTERVAL)


def holds_for(condition, seconds):
    """Whether `condition` stays true for all of the given time: for what must not happen."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if not condition():
            return False
        time.sleep(INTERVAL)
    return True
