"""Judges a world after a run: what the driver may have done, whatever happened to it."""

import collections
import re

from faults import Fault, Run, recover
from scenarios import Scenario
from snapshot import is_remainder, snapshot
from world import World

# What a clean-up needs.
CALLS_OF_CLEARING = ("unlinkat", "openat", "getdents64", "newfstatat", "fchmod", "fstat", "fcntl", "renameat2")
REMAINDER = "Copied, but could not remove all of"
LEFT_OF_IT = "what is left of it is in folder"
NUMBER = re.compile(r"\(\d+\)")
DEFECTS = ("lost", "overwritten", "partial", "untrue", "litter", "doubled", "late edit", "hung", "unmet")


def verdict_before_and_after_recovery(scenario, world: World, fault: Fault, run: Run, intruder, driver) -> dict:
    """The defects of one run, and of what the next start makes of it."""
    found = verdict(scenario, world, fault, run, intruder)
    run.told += recover(driver, world.home)
    return {**verdict(scenario, world, fault, run, intruder, recovered=True), **found}


def verdict(scenario: Scenario, world: World, fault: Fault, run: Run, intruder, recovered=False) -> dict:
    """The defects of one run, each with what shows it. `intruder` is what another program did meanwhile."""
    found = collections.defaultdict(list)
    if run.hung:
        found["hung"].append("it did not end")
    elif not run.met:
        found["unmet"].append("the fault did not come about")
    _judge_others(world, intruder.made, found)
    instances = _judge_items(scenario, world, run, intruder, found)
    if run.code == 0:
        _judge_success(scenario, world, instances, found)
    # Where the clean-up itself fails, the next start has to do it.
    clearing_fails = fault.kind == "KILL" or (fault.lasts and fault.call in CALLS_OF_CLEARING)
    for path in world.hidden():
        if recovered or (not clearing_fails and path.name not in run.told):
            found["litter"].append(str(path))
    if recovered and fault.kind == "KILL" and scenario.action == "move":
        for name in world.originals:
            if sum(instances[folder, name] for folder in world.folders) != 1:
                found["doubled"].append(name)
    return dict(found)


def _judge_others(world: World, made: dict, found: dict):
    for path, before in {**world.bystanders, **made}.items():
        if not path.exists() or snapshot(path) != before:
            found["overwritten"].append(str(path))


def _judge_items(scenario, world, run, intruder, found) -> dict:
    """How often each item lies whole in each folder; what is there and no whole item is partial."""
    names = {**intruder.edited, **{shot: name for name, shot in world.originals.items()}}
    instances, broken, seen = collections.Counter(), [], set()
    for folder in world.folders:
        for path in world.visible(folder):
            if path in world.bystanders or path in intruder.made:
                continue
            shot = snapshot(path)
            seen.add(shot)
            if shot in names:
                instances[folder, names[shot]] += 1
            else:
                broken.append((path, shot))
    for name in world.originals:
        if not any(instances[folder, name] for folder in world.folders):
            found["lost"].append(f"{name}; hidden: {[path.name for path in world.hidden()]}")
        if scenario.action == "copy" and instances[world.source, name] == 0:
            found["lost"].append(f"{name} itself, which was only to be copied")
    for shot, name in intruder.edited.items():
        if shot not in seen:
            found["late edit"].append(f"what was written to {name} is nowhere")
    for path, shot in broken:
        if not _is_told_remainder(scenario, world, run, instances, path, shot):
            found["partial"].append(str(path))
    return instances


def _is_told_remainder(scenario, world, run, instances, path, shot) -> bool:
    """What could not be removed of an item that has arrived elsewhere is put back, and told."""
    emptied = [world.source] if scenario.action == "move" else []
    if scenario.chain:
        emptied.append(world.target)
    name = NUMBER.sub("", path.name)
    arrived = any(instances[folder, name] for folder in world.folders)
    put_back = f'{REMAINDER} "{path}"' in run.told or f"{LEFT_OF_IT} {path.parent}" in run.told
    told = run.code != 0 and put_back
    return path.parent in emptied and arrived and told and is_remainder(shot, world.originals[name])


def _judge_success(scenario, world, instances, found):
    for folder, count in scenario.expected(world).items():
        for name in world.originals:
            if instances[folder, name] != count:
                found["untrue"].append(f"{name} lies {instances[folder, name]} times in {folder.name}")
    for path in world.hidden():
        found["untrue"].append(f"{path.name} is left in {path.parent.name}, which nobody was told")

