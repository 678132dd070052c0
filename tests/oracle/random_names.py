"""Names and queries that are hard to fold: any Unicode, marks stacked up, capitals, and bytes that are no UTF-8."""

import random
import unicodedata

# Texts known to be a trap: folding makes them longer or shorter, or takes apart what looks like one letter.
TRAPS = (
    "ß", "ẞ", "SS", "İ", "I", "ı", "i", "i\u0307", "ﬁ", "ﬃ", "ﬀ", "ŉ", "ǰ", "ΐ", "ᾳ", "ᾼ", "α\u0345", "ͅ", "ι",
    "Σ", "ς", "σ", "K", "Å", "Å", "å", "Ω", "ſ", "Ǆ", "ǅ", "ǆ", "é", "e\u0301", "é\u0323", "ệ", "한", "하\u11ab",
    "\u1112\u1161\u11ab", "가", "각", "だ", "た\u3099", "हि", "क़", "ก็", "שׁ", "ש\u05c1", "ؤ", "อำ", "Ꭰ", "ꭰ", "𐐀",
    "𐐨", "⼀", "豈", "豈", "½", "①", "Ａ", "ａ", "\u200d", "\ufeff", "\u00ad", "👩\u200d💻", "❤\ufe0f", "\u20dd", "Ⅷ",
    "ℌ", "ʼn", "Փ", "և", "եւ",
)  # fmt: skip
BAD_BYTES = (
    b"\xff", b"\xfe", b"\x80", b"\xbf", b"\xc3", b"\xc0\xaf", b"\xc1\x81", b"\xe2\x82", b"\xed\xa0\x80", b"\xf0\x9f\x98",
    b"\xf4\x90\x80\x80", b"\xf8\x88\x80\x80\x80", b"\xe0\x80\x80", b"\xef\xbf",
)  # fmt: skip
# From these most letters are taken, so that names share some.
ALPHABETS = ("abcABCéÉ ", "aeiouäöüß-", "ΑΒΓαβγςάΰ ", "АБВабвёй", "ab\u0301\u0308\u0327", "日本語仮名が", "한글가나", "Iıİi.")


class RandomNames:
    """The same for the same seed. Uses only code points for which `is_known` holds."""

    def __init__(self, seed, is_known):
        self._rnd = random.Random(seed)
        self._anything = [
            chr(code)
            for code in range(1, 0x110000)
            if code != ord("/") and is_known(code) and unicodedata.category(chr(code)) not in ("Cs", "Cn")
        ]

    def names(self, count) -> list:
        names = [self._name() for _ in range(count)]
        # Several folders of the same name.
        return names + [self._rnd.choice(names) for _ in range(count // 8)]

    def _name(self) -> bytes:
        alphabet = self._rnd.choice(ALPHABETS)
        name = b"".join(self._part(alphabet) for _ in range(self._rnd.randrange(1, 12)))
        return name[:255]

    def _part(self, alphabet) -> bytes:
        kind = self._rnd.random()
        if kind < 0.60:
            return self._rnd.choice(alphabet).encode()
        if kind < 0.80:
            return self._rnd.choice(TRAPS).encode()
        if kind < 0.95:
            return self._rnd.choice(self._anything).encode()
        return self._rnd.choice(BAD_BYTES)

    def queries(self, names, count) -> list:
        return [self._query(names) for _ in range(count)]

    def _query(self, names) -> bytes:
        kind = self._rnd.random()
        if kind < 0.02:
            return b""
        if kind < 0.05:
            return "".join(self._rnd.choice("\u0301\u0327\u0345\u093f") for _ in range(2)).encode()
        if kind < 0.07:
            return self._name() + b"\0" + self._name()
        if kind < 0.20:
            return self._name()[: self._rnd.randrange(1, 6)]
        text = self._rnd.choice(names).decode("utf-8", "surrogateescape")
        start = self._rnd.randrange(len(text))
        part = text[start : start + self._rnd.choice((1, 1, 2, 2, 3, 4, 8))]
        return self._disguised(part).encode("utf-8", "surrogateescape")

    def _disguised(self, text) -> str:
        """The text with its case and its marks changed."""
        change = self._rnd.choice((str.upper, str.lower, str.swapcase, str.title, str))
        text = change(text)
        if self._rnd.random() < 0.5:
            text = unicodedata.normalize(self._rnd.choice(("NFC", "NFD")), text)
        if self._rnd.random() < 0.3:
            text = "".join(c + self._rnd.choice(("", "", "\u0301", "\u0323")) for c in text)
        if self._rnd.random() < 0.3:
            text = "".join(c for c in text if not unicodedata.combining(c))
        return text
