"""What the driver is asked to do, and how the world is when it did."""

import os
from dataclasses import dataclass
from pathlib import Path

from world import World, make_file, make_large_file, make_link, make_tree


def _one_file(world):
    yield make_file(world.source / "letter.txt", b"a letter")


def _large_file(world):
    yield make_large_file(world.source / "film.bin")


def _taken_names(world):
    for name in ("report.pdf", "report(1).pdf"):
        make_file(world.target / name, b"already there: " + name.encode())
    yield make_file(world.source / "report.pdf", b"the new report")


def _three_items(world):
    yield make_file(world.source / "a.txt", b"first of three")
    # A link to nothing cannot be read, and is left out.
    yield make_link(world.source / "link", "/etc/passwd")
    yield make_file(world.source / os.fsdecode(b"c\xff\n.txt"), b"third of three")


def _tree(world):
    make_file(world.target / "tree", b"a file of the tree's name")
    yield make_tree(world.source / "tree")


def _many(world):
    for number in range(5):
        yield make_file(world.source / f"{number}.txt", b"one of many" * number)
    yield make_tree(world.source / "5 tree")
    for number in range(6, 10):
        yield make_file(world.source / f"{number}.txt", b"another of many" * number, 0o600)


ITEMS = {
    "file": _one_file,
    "large": _large_file,
    "taken": _taken_names,
    "three": _three_items,
    "tree": _tree,
    # So many that they are flushed together.
    "many": _many,
}


@dataclass(frozen=True)
class Scenario:
    action: str
    crossing: bool
    items: str
    chain: tuple = ()

    @property
    def name(self) -> str:
        place = "cross" if self.crossing else "same"
        return "-".join((self.action, place, self.items, *(option.removeprefix("--then-") for option in self.chain)))

    @property
    def ends_with(self) -> str:
        return self.chain[-1].removeprefix("--then-") if self.chain else "do"

    def build(self, source_side: Path, target_side: Path) -> World:
        """Below two folders, which lie on two file systems when it crosses them."""
        world = World(source_side / "source", target_side / "target", source_side / "home")
        for folder in (world.source, world.target, world.trash):
            folder.mkdir(parents=True)
        for folder in world.folders:
            make_file(folder / "bystander", b"not to be touched in " + folder.name.encode())
        world.items = list(ITEMS[self.items](world))
        world.remember()
        return world

    def command(self, driver: Path, world: World) -> list:
        return [driver, "--home", world.home, *self.chain, self.action, world.target, *world.items]

    def expected(self, world: World) -> dict:
        """How often each item lies in each folder when all went well."""
        move = {"do": (0, 1, 0), "undo": (1, 0, 0), "redo": (0, 1, 0)}
        copy = {"do": (1, 1, 0), "undo": (1, 0, 1), "redo": (1, 0, 1)}
        counts = (move if self.action == "move" else copy)[self.ends_with]
        return dict(zip(world.folders, counts, strict=True))


SCENARIOS = [
    Scenario(action, crossing, items) for action in ("move", "copy") for crossing in (False, True) for items in ITEMS
] + [
    Scenario(action, crossing, items, chain)
    for action, chains in (("move", (("--then-undo",), ("--then-undo", "--then-redo"))), ("copy", (("--then-undo",),)))
    for chain in chains
    for crossing in (False, True)
    for items in ("taken", "tree")
]
