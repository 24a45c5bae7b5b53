"""Reads a solver's .frd file, lines or binary, without a word of the reader under test.

It knows no more of the format than the comparison needs, and trusts the file as far as it goes.
"""

import re

import numpy

NODES = {1: 8, 2: 6, 3: 4, 4: 20, 5: 15, 6: 10, 7: 3, 8: 6, 9: 4, 10: 8, 11: 2, 12: 3}
LINES = (b"    1P", b"    1U", b"  100C", b" 9999")


class Block:
    """A result of a step: name, components, ids and a row of values for each of them."""

    def __init__(self, parameters, head):
        self.step = tuple(parameters) + (head[6:24], head[56:73])
        self.components = []


class FrdFile:
    def __init__(self, path):
        with open(path, "rb") as file:
            self.bytes = file.read()
        self.at = 0
        self.nodes = {}
        self.elements = []
        self.blocks = []
        self.mesh_end = None
        self.is_whole = False
        try:
            self.read()
        except (ValueError, IndexError):
            pass  # Here the file ends.

    def read(self):
        parameters = []
        while self.at < len(self.bytes):
            line = self.line()
            if line.startswith("    2C"):
                self.read_nodes(line)
            elif line.startswith("    3C"):
                self.read_elements(line)
                self.mesh_end = self.at
            elif line.startswith("    1P"):
                # The number of the block, which all of a step's have differently, is left out.
                if line.startswith("    1PSTEP"):
                    parameters.append(line[36:].split()[:2][0] + "/" + line[36:].split()[1])
                elif line.startswith("    1PMODE"):
                    parameters.append(line[10:].strip())
            elif line.startswith("  100C"):
                self.mesh_end = self.mesh_end or self.at
                self.read_block(Block(parameters, line), line)
                parameters = []
            elif line.startswith(" 9999"):
                self.is_whole = True
                break

    def line(self):
        end = self.bytes.index(b"\n", self.at)
        text = self.bytes[self.at : end].decode("latin-1").rstrip("\r")
        self.at = end + 1
        return text

    def looking_at(self, *starts):
        return any(self.bytes.startswith(start, self.at) for start in starts)

    def lines(self, width, count):
        """Rows of a block of lines: an id, and numbers of 12 columns."""
        ids, rows = [], []
        while True:
            line = self.line()
            if line.startswith(" -3"):
                return ids, rows
            start = 3 + width
            if line.startswith(" -1"):
                ids.append(int(line[3:start]))
                rows.append([])
            rows[-1] += [number(line[i : i + 12]) for i in range(start, len(line), 12)][
                : count - len(rows[-1])
            ]

    def records(self, form, count, width):
        kind = numpy.dtype([("id", "<i4"), ("row", "<f4" if form == 2 else "<f8", (width,))])
        table = numpy.frombuffer(self.bytes, kind, count, self.at)
        self.at += kind.itemsize * count
        return table["id"].tolist(), table["row"].astype(float)

    def rows(self, head, count, form, width):
        if form < 2:
            return self.lines(5 if form == 0 else 10, width)
        if self.looking_at(*LINES):
            return [], []
        return self.records(form, count, width)

    def read_nodes(self, head):
        form = int(head[73:])
        ids, rows = self.rows(head, int(head[24:36] or 0) if form > 1 else 0, form, 3)
        self.nodes = dict(zip(ids, rows))

    def read_elements(self, head):
        form = int(head[73:])
        if form < 2:
            element = None
            while not (line := self.line()).startswith(" -3"):
                if line.startswith(" -1"):
                    width = 5 if form == 0 else 10
                    element = (int(line[3 : 3 + width]), [])
                    self.elements.append(element)
                else:
                    element[1].extend(
                        int(line[i : i + width]) for i in range(3, len(line.rstrip()), width)
                    )
            return
        # What is announced is sometimes less than what is there.
        count = int(head[24:36])
        while not self.looking_at(*LINES):
            if self.at == len(self.bytes) and len(self.elements) >= count:
                return
            number, kind = numpy.frombuffer(self.bytes, "<i4", 2, self.at)
            nodes = numpy.frombuffer(self.bytes, "<i4", NODES[int(kind)], self.at + 16)
            self.elements.append((int(number), nodes.tolist()))
            self.at += 16 + nodes.nbytes

    def read_block(self, block, head):
        line = self.line()
        block.name = line[5:13].strip()
        for _ in range(int(line[13:18])):
            line = self.line()
            # A component that a viewer computes has a flag behind its row and column.
            flags = line[33:38].strip() if "\t" not in line else line[13:].split()[4:5] and "1"
            if flags not in ("1", "2"):
                block.components.append(line[5:13].strip())
        form = int(head[73:])
        block.begin = self.at
        count = int(head[24:36])
        block.ids, rows = self.rows(head, count, form, len(block.components))
        block.values = numpy.array(rows, float).reshape(len(block.ids), len(block.components))
        block.end = self.at
        self.blocks.append(block)


def number(text):
    text = text.strip()
    # No room was left for the letter of the exponent.
    found = re.fullmatch(r"([+-]?[\d.]+)([+-]\d+)", text)
    return float(f"{found[1]}e{found[2]}" if found else text.replace("D", "E"))
