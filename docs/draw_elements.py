#!/usr/bin/env python3
"""Draws the elements of a mesh with the places of their nodes, one picture for each order.

    docs/draw_elements.py [--check]

The orders are read from the library's own table, so that picture and program say the same. --check
writes nothing, and fails where a picture is another one than would be drawn.
"""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
TABLE = ROOT / "src/Zyl2/Mox2/ElementTypes.cpp"
IMAGES = ROOT / "docs/images"

CORNERS = {
    "Point": [(0.5, 0, 0)],
    "Line": [(0, 0, 0), (1, 0, 0)],
    "Triangle": [(0, 0, 0), (1, 0, 0), (0, 1, 0)],
    "Quadrangle": [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0)],
    "Tetrahedron": [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)],
    "Pyramid": [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0.5, 0.5, 1)],
    "Wedge": [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (0, 1, 1)],
    "Hexahedron": [
        (0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (1, 1, 1), (0, 1, 1),
    ],
}  # fmt: skip
EDGES = {
    "Point": "",
    "Line": "12",
    "Triangle": "12 23 31",
    "Quadrangle": "12 23 34 41",
    "Tetrahedron": "12 23 31 14 24 34",
    "Pyramid": "12 23 34 41 15 25 35 45",
    "Wedge": "12 23 31 45 56 64 14 25 36",
    "Hexahedron": "12 23 34 41 56 67 78 85 15 26 37 48",
}
SIZE = 190
COLUMNS = 5


def tables():
    """The types with their nodes in the order of the file, and what differs in other orders."""
    text = re.sub(r'"\s*"', "", TABLE.read_text())
    types = re.findall(r'\{"(\w+)", \d, \d+,\s*"([\d ]+)"\}', text)
    others = re.findall(r'\{NodeOrder::(\w+), ElementType::(\w+),\s*"([\d ]*)"\}', text)
    if len(types) != 22 or not others:
        sys.exit(f"{TABLE}: the table has another form than this script reads")
    return types, others


def projected(point):
    """Seen from the front, slightly from the right and above; y leads away."""
    x, y, z = point
    return 28 + 92 * x + 48 * y, 160 - 92 * z - 34 * y


def node(word, corners):
    points = [corners[int(digit) - 1] for digit in word]
    return tuple(sum(values) / len(points) for values in zip(*points))


def drawn(name, words, left, top):
    shape = re.sub(r"\d+$", "", name)
    corners = CORNERS[shape]
    lines = [f'<g transform="translate({left},{top})">', f'<text class="t" x="8" y="18">{name}</text>']
    for edge in EDGES[shape].split():
        (x1, y1), (x2, y2) = (projected(corners[int(digit) - 1]) for digit in edge)
        lines.append(f'<line x1="{x1:.0f}" y1="{y1:.0f}" x2="{x2:.0f}" y2="{y2:.0f}"/>')
    for number, word in enumerate(words.split(), 1):
        x, y = projected(node(word, corners))
        kind = "c" if len(word) == 1 else "m"
        lines.append(f'<circle class="{kind}" cx="{x:.0f}" cy="{y:.0f}" r="2.6"/>')
        lines.append(f'<text x="{x + 4:.0f}" y="{y - 4:.0f}">{number}</text>')
    return lines + ["</g>"]


def picture(title, elements):
    rows = -(-len(elements) // COLUMNS)
    width, height = COLUMNS * SIZE, rows * SIZE
    lines = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" role="img">',
        f"<title>{title}</title>",
        "<style>text{font:10px sans-serif;fill:#1b4f8a}.t{font-size:12px;fill:#333;font-weight:bold}"
        "line{stroke:#999;stroke-width:1}.c{fill:#1b4f8a}.m{fill:#fff;stroke:#1b4f8a}</style>",
        f'<rect width="{width}" height="{height}" fill="#fff"/>',
    ]
    for i, (name, words) in enumerate(elements):
        lines += drawn(name, words, SIZE * (i % COLUMNS), SIZE * (i // COLUMNS))
    return "\n".join(lines + ["</svg>", ""])


def pictures():
    types, others = tables()
    yield "nodes-model.svg", picture("Order of nodes in the file", types)
    for order in dict.fromkeys(order for order, _, _ in others):
        elements = [(name, words) for o, name, words in others if o == order and words]
        yield f"nodes-{order.lower()}.svg", picture(f"Other order of nodes: {order}", elements)


def main():
    stale = []
    for name, content in pictures():
        path = IMAGES / name
        if "--check" not in sys.argv[1:]:
            path.write_text(content)
        elif not path.exists() or path.read_text() != content:
            stale.append(name)
    if stale:
        sys.exit(f"docs/draw_elements.py would draw another {', '.join(stale)}: run it")


if __name__ == "__main__":
    main()
