"""The growth of time and memory as a drawing, logarithmic in both directions."""

import math

WIDTH, HEIGHT = 760, 430
LEFT, RIGHT, TOP, BOTTOM = 66, 66, 46, 52
TIME, MEMORY, INK, FAINT = "#2a6fb0", "#b4552d", "#666666", "#dddddd"


class Scale:
    """Powers of ten from below the smallest value to above the largest, between two places on the page."""

    def __init__(self, values, start, end):
        self.first = math.floor(math.log10(min(values)) + 1e-9)
        self.last = max(math.ceil(math.log10(max(values)) - 1e-9), self.first + 1)
        self._start, self._end = start, end

    def place(self, value) -> float:
        share = (math.log10(value) - self.first) / (self.last - self.first)
        return self._start + share * (self._end - self._start)

    def powers(self):
        return [10.0**exponent for exponent in range(self.first, self.last + 1)]


def text(x, y, words, color=INK, anchor="middle", size=13):
    return f'<text x="{x:.1f}" y="{y:.1f}" fill="{color}" text-anchor="{anchor}" font-size="{size}">{words}</text>'


def line(x1, y1, x2, y2, color):
    return f'<path d="M{x1:.1f} {y1:.1f} L{x2:.1f} {y2:.1f}" stroke="{color}" fill="none"/>'


def curve(points, color):
    path = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
    dots = "".join(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="3.5" fill="{color}"/>' for x, y in points)
    return f'<polyline points="{path}" stroke="{color}" stroke-width="2" fill="none"/>{dots}'


def amount(value, units) -> str:
    """Such as 10 ms: the unit is the largest that the value reaches."""
    size, unit = next(((size, unit) for size, unit in units if value >= size * 0.999), units[-1])
    return f"{value / size:g} {unit}"


def amount_of_time(seconds) -> str:
    return amount(seconds, [(1, "s"), (1e-3, "ms"), (1e-6, "µs")])


def amount_of_memory(size) -> str:
    return amount(size, [(1e9, "GB"), (1e6, "MB"), (1e3, "kB")])


def growth_plot(points) -> str:
    """Time to the left, peak memory to the right; returns the SVG."""
    folders = [point["folders"] for point in points]
    seconds = [point["seconds"] for point in points]
    memory = [point["peak_bytes"] for point in points]
    across = Scale([count - 1 for count in folders], LEFT, WIDTH - RIGHT)
    up = Scale(seconds, HEIGHT - BOTTOM, TOP)
    up_memory = Scale(memory, HEIGHT - BOTTOM, TOP)
    parts = [f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#ffffff"/>']
    for count in across.powers():
        x = across.place(count)
        parts += [line(x, TOP, x, HEIGHT - BOTTOM, FAINT), text(x, HEIGHT - BOTTOM + 20, f"{count:,.0f}")]
    for value in up.powers():
        y = up.place(value)
        parts += [line(LEFT, y, WIDTH - RIGHT, y, FAINT), text(LEFT - 8, y + 4, amount_of_time(value), TIME, "end")]
    for value in up_memory.powers():
        y = up_memory.place(value)
        parts += [line(WIDTH - RIGHT, y, WIDTH - RIGHT + 5, y, MEMORY)]
        parts += [text(WIDTH - RIGHT + 9, y + 4, amount_of_memory(value), MEMORY, "start")]
    places = [across.place(count) for count in folders]
    parts += [
        curve([(x, up_memory.place(value)) for x, value in zip(places, memory)], MEMORY),
        curve([(x, up.place(value)) for x, value in zip(places, seconds)], TIME),
        text((LEFT + WIDTH - RIGHT) / 2, HEIGHT - 12, "folders"),
        text(LEFT, TOP - 20, "time until searchable", TIME, "start", 14),
        text(WIDTH - RIGHT, TOP - 20, "peak memory of the process", MEMORY, "end", 14),
    ]
    body = "\n".join(parts)
    head = f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" font-family="sans-serif">'
    return f"{head}\n{body}\n</svg>\n"
