"""Damages model files by seed: blindly, and by what they consist of.

What is damaged knowingly gets past the index and the checksums of the compressed blocks, so that it
reaches the records.
"""

from __future__ import annotations

import random
import struct
import zlib
from typing import List

_FIRST_BLOCK = 2800
_ENTRY = 139
_NAMES = [
    b"Mox Tree",
    b"Light Data",
    b"Heavy Data",
    b"Attributes",
    b"Resources",
    b"Global Information",
    b"View Points",
    b"\x0bIndex Block ",
    b"\x0bEmpty Block ",
]
_STRIKING_WORDS = [
    0, 1, 2, 3, 6, 255, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x3FFFFFFF, 0x10000, 0xFFFFFFFC,
]  # fmt: skip


class Part:
    """A slot: its entry in the index, and its block."""

    def __init__(self, entry: bytes, block: bytes) -> None:
        self.entry = bytearray(entry)
        self.block = block

    @property
    def name(self) -> bytes:
        return bytes(self.entry[5:133]).rstrip(b"\0")

    @property
    def is_compressed(self) -> bool:
        return self.entry[137] & 1 == 1

    @property
    def is_block(self) -> bool:
        return self.name[:1] != b"\x0b"

    def state_size(self, size: int) -> None:
        self.entry[133:137] = struct.pack("<I", size & 0xFFFFFFFF)

    def content(self) -> bytes:
        return zlib.decompress(self.block[4:]) if self.is_compressed else self.block

    def set_content(self, content: bytes) -> None:
        self.block = content
        if self.is_compressed:
            self.block = struct.pack("<I", len(content)) + zlib.compress(content, 1)
        self.state_size(len(self.block))


def split(file: bytes) -> List[Part]:
    """The slots of a sound file."""
    parts: List[Part] = []
    groups = [(20, 20)]
    position = _FIRST_BLOCK
    while groups:
        offset, count = groups.pop()
        for number in range(count):
            entry = file[offset + number * _ENTRY :][:_ENTRY]
            (size,) = struct.unpack_from("<I", entry, 133)
            part = Part(entry, file[position : position + size])
            if part.name == _NAMES[7].rstrip(b"\0"):
                groups.append((position + 4, 200))
            position += size
            parts.append(part)
    return parts


def join(parts: List[Part]) -> bytes:
    """A file of these slots, whose index blocks have the entries that follow them."""
    blocks = [part.block for part in parts]
    for number in range(19, len(parts), 200):
        if number + 1 < len(parts):
            entries = b"".join(bytes(part.entry) for part in parts[number + 1 : number + 201])
            blocks[number] = struct.pack("<I", 200) + entries
    root = b"".join(bytes(part.entry) for part in parts[:20])
    start = b"\x89WVF\r\n\x1a\n1.3\0" + struct.pack("<II", 2784, 20)
    return start + root + b"".join(blocks)


def _blindly(raw: bytes, choice: random.Random) -> bytes:
    """Bytes are changed, cut out, put in, repeated or cut off."""
    data = bytearray(raw)
    for _ in range(choice.choice([1, 1, 2, 5])):
        at = choice.randrange(len(data) + 1)
        length = min(choice.choice([1, 1, 2, 4, 50]), len(data) - at)
        kind = choice.randrange(6)
        if kind <= 1:
            data[at : at + length] = choice.randbytes(length)
        elif kind == 2:
            del data[at : at + length]
        elif kind == 3:
            data[at:at] = choice.randbytes(max(1, length))
        elif kind == 4:
            data[at:at] = data[at : at + length]
        elif at < len(data):
            data[at] ^= 1 << choice.randrange(8)
    return bytes(data)


def _patched(content: bytes, choice: random.Random) -> bytes:
    """Counts, lengths, ids and positions are words."""
    if len(content) < 4:
        return content
    at = choice.randrange(len(content) - 3)
    return content[:at] + struct.pack("<I", choice.choice(_STRIKING_WORDS)) + content[at + 4 :]


def _change(parts: List[Part], choice: random.Random) -> None:
    """Changes one thing."""
    blocks = [part for part in parts if part.is_block]
    # Each key is chosen as often as another one, however many blocks it has.
    name = choice.choice(sorted({part.name for part in blocks}))
    block = choice.choice([part for part in blocks if part.name == name])
    part = choice.choice(parts)
    kind = choice.randrange(14)
    if kind == 0:
        part.entry[:] = (_blindly(bytes(part.entry), choice) + bytes(_ENTRY))[:_ENTRY]
    elif kind == 1:
        (size,) = struct.unpack_from("<I", part.entry, 133)
        part.state_size(choice.choice([size + 1, size - 1, choice.choice(_STRIKING_WORDS)]))
    elif kind == 2:
        part.entry[5:133] = choice.choice(_NAMES).ljust(128, b"\0")
    elif kind == 3:
        content = block.content()
        block.entry[137] ^= 1
        block.set_content(content)
    elif kind == 4:
        _split_block(parts, block, choice)
    elif kind == 5:
        other = choice.choice(blocks)
        block.entry[1:], other.entry[1:] = other.entry[1:], block.entry[1:]
        block.block, other.block = other.block, block.block
    elif kind == 6:
        block.block = _blindly(block.block, choice)
        block.state_size(len(block.block))
    elif kind == 7 and block.is_compressed:
        (length,) = struct.unpack_from("<I", block.block)
        stated = choice.choice([length + 1, max(0, length - 1), choice.choice(_STRIKING_WORDS)])
        block.block = struct.pack("<I", stated) + block.block[4:]
    elif kind <= 10:
        block.set_content(_patched(block.content(), choice))
    else:
        block.set_content(_blindly(block.content(), choice))


def _split_block(parts: List[Part], block: Part, choice: random.Random) -> None:
    """Lets the stream of a key go on in another block, at any byte."""
    if parts[-1].is_block:
        return
    content = block.content()
    cut = choice.randrange(len(content) + 1)
    second = Part(bytes(block.entry), b"")
    second.set_content(content[cut:])
    block.set_content(content[:cut])
    parts.insert(parts.index(block) + 1, second)
    parts.pop()
    for number, part in enumerate(parts):
        part.entry[0] = (number + 1) & 0xFF


def damaged(file: bytes, seed: int) -> bytes:
    """A sound file, damaged: the same seed gives the same file."""
    choice = random.Random(seed)
    if choice.randrange(8) == 0:
        return _blindly(file, choice)
    if choice.randrange(16) == 0:
        return file[: choice.randrange(len(file))]
    parts = split(file)
    for _ in range(choice.choice([1, 1, 1, 2])):
        try:
            _change(parts, choice)
        except (zlib.error, struct.error):
            # The first change has damaged what the second one was to change.
            break
    return join(parts)
