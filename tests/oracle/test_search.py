"""The program's search against a slow and plain one, over random names and queries."""

import os
import struct
import subprocess

import pytest

from drivers import driver
from random_names import RandomNames
from slow_search import folded, search

CASES = int(os.environ.get("BRIMWICK_ORACLE_CASES", "100000"))
QUERIES = 50
NAMES = 60
# So many that several threads share them.
MANY_NAMES = 12000
DRIVER = driver("search_driver")


def is_known():
    """Which code points the program's library knows; the libraries may stand at different versions of Unicode."""
    answers = subprocess.run([DRIVER, "assigned"], check=True, capture_output=True).stdout
    return lambda code: answers[code] == ord("y")


def packed(text: bytes) -> bytes:
    return struct.pack("=I", len(text)) + text


def answers_of_program(indexes) -> list:
    """For each of the (names, queries) the list of results."""
    given = b"".join(
        struct.pack("=I", len(names)) + b"".join(map(packed, names))
        + struct.pack("=I", len(queries)) + b"".join(map(packed, queries))
        for names, queries in indexes
    )  # fmt: skip
    said = subprocess.run([DRIVER], input=given, check=True, stdout=subprocess.PIPE).stdout
    numbers = iter(struct.unpack(f"={len(said) // 4}I", said))
    # The folder that the names are in is number 0.
    return [
        [[next(numbers) - 1 for _ in range(next(numbers))] for _ in queries] for _, queries in indexes
    ]


def disagreements(indexes):
    for (names, queries), answers in zip(indexes, answers_of_program(indexes)):
        folded_names = [folded(name) for name in names]
        for query, answer in zip(queries, answers):
            expected = search(names, folded_names, query)
            if answer != expected:
                wrong = [names[n] for n in set(answer) ^ set(expected)] or "the order"
                yield f"searching {query} ({ascii(query.decode(errors='replace'))}): they differ in {wrong}"


def assert_same(indexes):
    found = list(disagreements(indexes))
    cases = sum(len(queries) for _, queries in indexes)
    assert not found, f"{len(found)} of {cases} cases:\n" + "\n".join(found[:20])


@pytest.mark.parametrize("seed", range(10))
def test_finds_what_a_plain_search_finds_in_the_same_order(seed):
    random_names = RandomNames(seed, is_known())
    indexes = []
    for _ in range(-(-CASES // (10 * QUERIES))):
        names = random_names.names(NAMES)
        indexes.append((names, random_names.queries(names, QUERIES)))
    assert_same(indexes)


@pytest.mark.parametrize("seed", range(3))
def test_finds_the_same_among_names_that_several_threads_share(seed):
    random_names = RandomNames(f"many/{seed}", is_known())
    names = random_names.names(MANY_NAMES)
    assert_same([(names, random_names.queries(names, QUERIES))])
