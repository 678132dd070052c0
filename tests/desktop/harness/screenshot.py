"""Pictures of the display."""

from pathlib import Path

from .processes import Children


def take_screenshot(children: Children, path: Path, window=None):
    """Writes the whole screen, or one window, as a PNG file."""
    picture = children.run(
        ["import", "-window", hex(window.identifier) if window else "root", "png:-"], timeout=30
    )
    if picture.returncode != 0:
        raise RuntimeError(f"no screenshot: {picture.stderr.decode(errors='replace')}")
    path.write_bytes(picture.stdout)
