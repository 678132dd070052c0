"""Search done the slow and plain way, with another library's knowledge of Unicode, to compare the program's with."""

import unicodedata


def folded(text: bytes) -> bytes:
    """Without case and marks: what remains of the decomposed text without its marks, its case folded, decomposed
    again. Bytes that are no UTF-8 stay."""
    return _letters(_letters(text.decode("utf-8", "surrogateescape")).casefold()).encode("utf-8", "surrogateescape")


def _letters(text: str) -> str:
    return "".join(c for c in unicodedata.normalize("NFD", text) if not unicodedata.category(c).startswith("M"))


def search(names: list, folded_names: list, query: bytes) -> list:
    """The numbers of the names that contain the query, by name in the order of its bytes, equal names in order of
    their numbers. What is empty, or was nothing but marks, is contained in no name."""
    wanted = folded(query)
    if not wanted:
        return []
    return sorted((n for n, name in enumerate(folded_names) if wanted in name), key=lambda n: (names[n], n))
