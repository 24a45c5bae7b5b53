"""Builds small model files from their records, sound ones and others."""

from __future__ import annotations

import struct
import zlib
from typing import Dict, List, Optional, Sequence, Tuple

import numpy as np

_SPARE = b"\x0bEmpty Block "


def text(value: str) -> bytes:
    raw = value.encode("utf-8", "surrogateescape")
    return struct.pack("<I", len(raw)) + raw


def attribute_list(attributes: Dict[str, object]) -> bytes:
    names = sorted(attributes, key=lambda name: name.encode())
    tags = {int: (0, "<I"), float: (1, "<f"), str: (2, ""), np.float64: (3, "<d")}
    packed: Dict[int, bytes] = {0: b"", 1: b"", 2: b"", 3: b""}
    used = []
    for name in names:
        value = attributes[name]
        tag, layout = tags[type(value)]
        used.append(tag)
        packed[tag] += struct.pack(layout, value) if layout else text(str(value))
    result = struct.pack("<I", len(names)) + b"".join(map(text, names))
    result += struct.pack("<I", len(names)) + bytes(used)
    for tag in (0, 1, 3, 2):
        result += struct.pack("<I", used.count(tag)) + packed[tag]
    return result


def block(
    key: bytes, content: bytes, stated: Optional[int] = None, compress: bool = True
) -> Tuple[bytes, bytes, int]:
    if not compress:
        return key, content, 0
    length = len(content) if stated is None else stated
    return key, struct.pack("<I", length) + zlib.compress(content), 1


def container(blocks: Sequence[Tuple[bytes, bytes, int]]) -> bytes:
    """A file of at most 19 blocks."""
    slots = list(blocks) + [(_SPARE, b"", 0)] * (20 - len(blocks))
    entries = b"".join(
        struct.pack("<BI128sIBB", number + 1, 128, key, len(raw), transformations, 0)
        for number, (key, raw, transformations) in enumerate(slots)
    )
    start = b"\x89WVF\r\n\x1a\n1.3\0" + struct.pack("<II", 2784, 20)
    return start + entries + b"".join(raw for _, raw, _ in slots)


class Builder:
    """A model whose root is a group. Nodes are numbered from 1, variables of a node from 0."""

    def __init__(self, root: str = "Root") -> None:
        self._parents: List[int] = []
        self._tree: List[bytes] = []
        self._light = b""
        self._attributes = b""
        self._resources = b""
        self._heavy = b""
        self._variables: Dict[int, List[Tuple[bytes, bytes]]] = {}
        self._content: List[Tuple[str, object]] = []
        self.group(root, 0)

    def group(
        self, name: str, parent: int = 1, transform: Sequence[float] = (), **attributes: object
    ) -> int:
        numbers = transform or (0, 0, 0, 0, 0, 1, 0, 1, 1, 1)
        light = struct.pack("<10f", *numbers) + b"\0"
        return self._add(name, "Group", "0.4", parent, (light, attribute_list(attributes), b""))

    def shape(self, name: str, parent: int = 1) -> int:
        """The id of the shape; that of its geometry is one more."""
        material = struct.pack("<I", 84) + text("0.3") + struct.pack("<18f", *range(18)) + b"\1"
        shape = self._add(name, "Shape", "0.2", parent, (b"", b"", material))
        self._add(name, "Geometry", "0.7", shape, None)
        return shape

    def dataset(
        self,
        shape: int,
        name: str,
        kind: int,
        values: object,
        step: Optional[str] = None,
        **attributes: object,
    ) -> None:
        array = np.asarray(values)
        array = array.astype("<f4" if array.dtype.kind == "f" else "<u4")
        width = 1 if array.ndim == 1 else array.shape[1]
        raw = (
            array.reshape(-1, width)
            .view(np.uint8)
            .reshape(-1, width, 4)
            .transpose(1, 2, 0)
            .tobytes()
        )
        code = 1 if array.dtype.kind == "f" else 5
        self.header(
            shape,
            name if step is None else name + "\x1e" + step,
            struct.pack("<IBIB11xQB", kind | code << 24, 0, array.size, width, len(self._heavy), 0),
            attributes,
        )
        self._heavy += raw

    def link(
        self, shape: int, name: str, kind: int, target: int, number: int, step: Optional[str] = None
    ) -> None:
        full = name if step is None else name + "\x1e" + step
        self.header(shape, full, struct.pack("<IBIIB", kind | 1 << 24, 1, target, number, 0), {})

    def header(self, shape: int, name: str, fields: bytes, attributes: Dict[str, object]) -> None:
        self._variables[shape + 1].append((text(name) + fields, attribute_list(attributes)))

    def streams(self) -> Dict[bytes, bytes]:
        self._light = self._attributes = self._resources = b""
        tree = struct.pack("<I", len(self._parents))
        for ident, parent in enumerate(self._parents, 1):
            siblings = [i for i, p in enumerate(self._parents, 1) if p == parent]
            children = [i for i, p in enumerate(self._parents, 1) if p == ident]
            place = siblings.index(ident)
            before = siblings[place - 1] if place else 0
            after = siblings[place + 1] if place + 1 < len(siblings) else 0
            first, last = (children[0], children[-1]) if children else (0, 0)
            tree += struct.pack("<6I", ident, parent, before, after, first, last)
            tree += self._tree[ident - 1] + struct.pack("<Q", len(self._light))
            self._add_content(ident)
        writing = text("0.1") + b"".join(
            map(text, ["one", "two", "1.3", "now", "host", "user", ""])
        )
        information = struct.pack("<II", 1, len(writing) + 4) + writing + struct.pack("<I", 0)
        return {
            b"Heavy Data": self._heavy,
            b"Mox Tree": tree,
            b"Light Data": self._light,
            b"Attributes": self._attributes,
            b"Resources": self._resources,
            b"Global Information": information,
        }

    def file(self) -> bytes:
        return container([block(key, content) for key, content in self.streams().items()])

    def _add(self, name: str, kind: str, version: str, parent: int, content: object) -> int:
        self._parents.append(parent)
        self._tree.append(text(name) + text(kind) + text(version))
        self._content.append((kind, content))
        ident = len(self._parents)
        if kind == "Geometry":
            self._variables[ident] = []
        return ident

    def _add_content(self, ident: int) -> None:
        kind, content = self._content[ident - 1]
        if kind == "Geometry":
            variables = self._variables[ident]
            self._light += struct.pack("<I", len(variables)) + b"".join(v[0] for v in variables)
            self._attributes += b"".join(v[1] for v in variables)
            return
        assert isinstance(content, tuple)
        self._light += content[0]
        self._attributes += content[1]
        self._resources += content[2]
