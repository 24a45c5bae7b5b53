"""Reads model files with NumPy and the standard library alone.

This module needs nothing else of its package: copied beside a script, it works wherever a Python
with NumPy is, a viewer's own Python too.

    import moxwriter

    with moxwriter.open("beam.mox") as file:
        steel = file["Beam/Steel"]
        displacement = steel["Displacement", "Load 1"]    # array of rows x 3 floats
        for name, step in file.steps.items():
            print(name, step.attributes.get("Time"))

Opening a file reads and checks all but the values of the datasets. Those are read when they are
asked for, block by block, and the blocks used last are kept for the next ones. What a damaged file
breaks is said by a `FormatError`; values are given only when the whole block that holds them is
sound. docs/container-format.md draws the bytes:

    file       signature, version, index of 20 slots, then the blocks; index blocks describe further
               slots, 200 each
    block      its bytes, or uint32 length and one zlib stream that inflates to that length
    stream     the contents of all blocks of one key
    dataset    column after column, each as four planes of bytes, the lowest bytes of all rows first
"""

from __future__ import annotations

import bisect
import importlib
import os
import stat
import struct
import threading
import warnings
import zlib
from collections import OrderedDict
from types import MappingProxyType, TracebackType
from typing import (
    TYPE_CHECKING,
    Any,
    BinaryIO,
    Dict,
    Iterator,
    List,
    Mapping,
    NamedTuple,
    Optional,
    Tuple,
    Type,
    Union,
)

import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Array = NDArray[Any]
    Bytes = NDArray[np.uint8]

__all__ = [
    "AmbiguousPathError",
    "Dataset",
    "Error",
    "File",
    "FileError",
    "FormatError",
    "IncompleteFileError",
    "Material",
    "MeshError",
    "MissingKeyError",
    "Node",
    "OutOfMemoryError",
    "Step",
    "Transform",
    "WritingRecord",
    "to_meshio",
]
# `open` is not among them: `import *` shall leave Python's own in place.

#: Value of an attribute: an integer from 0 to 4294967295, a float, or a text. A negative integer
#: that a host gave was stored as its 32 bits, so that -1 reads 4294967295.
AttributeValue = Union[int, float, str]
#: Key of a dataset of a node: its name, or its name and the name of its step.
DatasetKey = Union[str, Tuple[str, str]]
PathLike = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]

DEFAULT_CACHE_BYTES = 320 << 20
DEFAULT_TREE_BYTES = 1 << 30


class Error(Exception):
    """Root of everything that this package raises."""

    #: What exactly was wrong, where that is told beside the text: by failures of writing.
    detail = ""

    @property
    def text(self) -> str:
        """What failed, without the detail."""
        return str(self)

    def __str__(self) -> str:
        # As KeyError, some kinds would show the sentence in quotes.
        return str(self.args[0]) if self.args else ""


class FormatError(Error, ValueError):
    """The file breaks a rule of the format: it is damaged, or it is no model file."""


class IncompleteFileError(FormatError):
    """The file's writer did not get as far as closing it, or the file was cut off."""


class FileError(Error, OSError):
    """The file can't be opened or read, or has been closed."""


class OutOfMemoryError(Error, MemoryError):
    """What was asked for is more than memory, or more than the bound that was given."""


class MissingKeyError(Error, KeyError):
    """No node has the path, or the node has no such dataset."""


class AmbiguousPathError(MissingKeyError):
    """Several nodes have the path; "#" and an id names one of them."""


class MeshError(Error, ValueError):
    """The datasets of a node make no mesh, or none that meshio has a type for."""


# ------------------------------------------------------------------------------------------ texts

_LONGEST_QUOTE = 200


def _quoted(text: str) -> str:
    """Text between quotation marks, for messages: on one line, and not without end."""
    shown = text if len(text) <= _LONGEST_QUOTE else text[:_LONGEST_QUOTE] + "..."
    escaped = shown.replace("\\", "\\\\").replace('"', '\\"')
    return '"' + "".join(c if c.isprintable() else "\\x%02X" % ord(c) for c in escaped) + '"'


def _text(raw: bytes) -> str:
    """Names are bytes, usually UTF-8. Bytes that are none come back as single surrogates."""
    return raw.decode("utf-8", "surrogateescape")


# ------------------------------------------------------------------------------------- container

_SIGNATURE = b"\x89WVF\r\n\x1a\n"
_VERSION = b"1.3\0"
_HEADER_SIZE = 12
_ROOT_LENGTH = 2784
_ROOT_COUNT = 20
_FIRST_BLOCK = 2800
_GROUP_COUNT = 200
_INDEX_BLOCK_SIZE = 27804
_INDEX_BLOCK_TRANSFORMATIONS = 32
_ENTRY_SIZE = 139
_NAME_WIDTH = 128
_COMPRESSED = 1
_FROZEN = 32
# id, width of the name, name, size, transformations, reserved
_ENTRY = struct.Struct("<BI128sIBB")
_INDEX_BLOCK = b"\x0bIndex Block "
_SPARE = b"\x0bEmpty Block "
_HEAVY_DATA = b"Heavy Data"
_KEYS = (
    b"Mox Tree",
    b"Light Data",
    _HEAVY_DATA,
    b"Attributes",
    b"Resources",
    b"Global Information",
    b"View Points",
)
# No deflate stream expands further: a match of 258 bytes takes two bits at least.
_GREATEST_EXPANSION = 1032
_INPUT_PIECE = 1 << 16
_OUTPUT_PIECE = 1 << 20


class _InputFile:
    """The bytes of a regular file, whose size is that at the time of opening."""

    def __init__(self, path: PathLike) -> None:
        self._file = self._opened(path)
        try:
            status = os.fstat(self._file.fileno())
            if not stat.S_ISREG(status.st_mode):
                raise FileError("not a regular file")
        except OSError as reason:
            self._file.close()
            raise FileError(str(reason)) from None
        except Error:
            self._file.close()
            raise
        self.size = status.st_size

    @staticmethod
    def _opened(path: PathLike) -> BinaryIO:
        # A named pipe without a writer would block an ordinary open for ever.
        flags = os.O_RDONLY
        for extra in ("O_BINARY", "O_NONBLOCK", "O_CLOEXEC"):
            flags |= getattr(os, extra, 0)
        try:
            descriptor = os.open(path, flags)
        except (OSError, ValueError) as reason:
            text = getattr(reason, "strerror", None) or str(reason)
            raise FileError("cannot be opened: " + text) from None
        try:
            return os.fdopen(descriptor, "rb", 0)
        except OSError as reason:
            os.close(descriptor)
            text = reason.strerror or str(reason)
            raise FileError("cannot be opened: " + text) from None

    def read(self, offset: int, count: int) -> bytes:
        pieces = []
        done = 0
        try:
            if self._file.closed:
                raise FileError("the file has been closed")
            self._file.seek(offset)
            while done < count:
                piece = self._file.read(count - done)
                if not piece:
                    raise IncompleteFileError(
                        "incomplete: the file ends at byte %d" % (offset + done)
                    )
                pieces.append(piece)
                done += len(piece)
        except FileError:
            raise
        except OSError as reason:
            text = reason.strerror or str(reason)
            raise FileError("cannot be read at byte %d: %s" % (offset + done, text)) from None
        return pieces[0] if len(pieces) == 1 else b"".join(pieces)

    def close(self) -> None:
        self._file.close()


class _Slot(NamedTuple):
    """One entry of the index: a place for a block."""

    number: int
    name: bytes
    position: int
    size: int
    transformations: int

    @property
    def end(self) -> int:
        return self.position + self.size

    def describe(self) -> str:
        return "slot %d %s at byte %d" % (self.number, _quoted(_text(self.name)), self.position)


def _decoded_slot(number: int, entry: bytes, offset: int, position: int) -> _Slot:
    """The slot whose entry stands at the offset of the file."""
    ident, width, field, size, transformations, reserved = _ENTRY.unpack(entry)

    def wrong(what: str, at: int, found: int, expected: str) -> FormatError:
        return FormatError(
            "slot %d: %s at byte %d is %d, not %s" % (number, what, offset + at, found, expected)
        )

    if ident != (number + 1) & 0xFF:
        raise wrong("id", 0, ident, str((number + 1) & 0xFF))
    if width != _NAME_WIDTH:
        raise wrong("name field width", 1, width, "128")
    name, _, rest = field.partition(b"\0")
    if rest.strip(b"\0"):
        raise FormatError("slot %d: its name field goes on after the name's end" % number)
    if name != _INDEX_BLOCK and name != _SPARE and name not in _KEYS:
        raise FormatError("slot %d: unknown block name %s" % (number, _quoted(_text(name))))
    if transformations & ~(_COMPRESSED | _FROZEN):
        raise wrong("transformations", 137, transformations, "0, 1, 32 or 33")
    if transformations & _FROZEN and name not in (_INDEX_BLOCK, _HEAVY_DATA):
        raise FormatError(
            "slot %d: transformations are %d, but no block of %s is written early"
            % (number, transformations, _quoted(_text(name)))
        )
    if reserved != 0:
        raise wrong("reserved byte", 138, reserved, "0")
    if name == _SPARE and (size != 0 or transformations != 0):
        raise FormatError("slot %d: a spare slot has size or transformations" % number)
    return _Slot(number, name, position, size, transformations)


def _is_cut_short(entry: bytes) -> bool:
    """Whether a group's last entry looks as it does when writing the group was cut short.

    Behind the name a spare slot has nothing but zeros, an index block has its size.
    """
    written = entry[1:].rstrip(b"\0")
    width = struct.pack("<I", _NAME_WIDTH)
    spare = width + _SPARE
    is_spare_in_part = spare.startswith(written) and written != spare
    return is_spare_in_part or (width + _INDEX_BLOCK).startswith(written)


class _Container:
    """Header, index and blocks of a file."""

    def __init__(self, file: _InputFile) -> None:
        self.file = file
        self._slots: List[_Slot] = []
        self._read_header()
        self._read_root_index()
        self._read_index_chain()
        self._check_end()
        self._by_key: Dict[bytes, List[_Slot]] = {key: [] for key in _KEYS}
        for slot in self._slots:
            if slot.name in self._by_key:
                self._by_key[slot.name].append(slot)

    def blocks_of(self, key: bytes) -> List[_Block]:
        return [_Block(self.file, slot) for slot in self._by_key[key]]

    def _read_header(self) -> None:
        start = self.file.read(0, min(self.file.size, len(_SIGNATURE)))
        if not _SIGNATURE.startswith(start):
            raise FormatError("not a mox file: it does not begin with the signature")
        if self.file.size < _HEADER_SIZE:
            raise IncompleteFileError(
                "incomplete: the file ends at byte %d, within the header" % self.file.size
            )
        version = self.file.read(len(_SIGNATURE), len(_VERSION))
        if version != _VERSION:
            raise FormatError(
                'version at byte 8 is %s, not "1.3" and a zero byte' % _quoted(_text(version))
            )

    def _read_root_index(self) -> None:
        if self.file.size < _FIRST_BLOCK:
            raise IncompleteFileError(
                "incomplete: the file ends at byte %d, within the root index" % self.file.size
            )
        length, count = struct.unpack("<II", self.file.read(_HEADER_SIZE, 8))
        if length == 0 and count == 0:
            raise IncompleteFileError("incomplete: the root index at byte 12 was never written")
        if length != _ROOT_LENGTH or count != _ROOT_COUNT:
            raise FormatError(
                "the root index at byte 12 has length %d and %d entries, not 2784 and 20"
                % (length, count)
            )
        self._add_group("the root index at byte 12", _HEADER_SIZE + 8, _ROOT_COUNT)

    def _read_index_chain(self) -> None:
        while self._slots[-1].name == _INDEX_BLOCK:
            slot = self._slots[-1]
            (count,) = struct.unpack("<I", self.file.read(slot.position, 4))
            if count == 0:
                raise IncompleteFileError("incomplete: %s was never written" % slot.describe())
            if count != _GROUP_COUNT:
                raise FormatError("%s: entry count is %d, not 200" % (slot.describe(), count))
            self._add_group(slot.describe(), slot.position + 4, _GROUP_COUNT)

    def _add_group(self, place: str, offset: int, count: int) -> None:
        raw = self.file.read(offset, count * _ENTRY_SIZE)
        if _is_cut_short(raw[-_ENTRY_SIZE:]):
            raise IncompleteFileError("incomplete: %s was written in part only" % place)
        for at in range(0, count * _ENTRY_SIZE, _ENTRY_SIZE):
            if at > 0 and self._slots[-1].name == _INDEX_BLOCK:
                raise FormatError(
                    "%s: an index block is not the last slot of its group"
                    % self._slots[-1].describe()
                )
            self._add_slot(raw[at : at + _ENTRY_SIZE], offset + at)
        last = self._slots[-1]
        if last.name not in (_INDEX_BLOCK, _SPARE):
            raise FormatError(
                "%s: the last slot of a group is neither spare nor an index block" % last.describe()
            )

    def _add_slot(self, entry: bytes, offset: int) -> None:
        before = self._slots[-1] if self._slots else None
        position = before.end if before else _FIRST_BLOCK
        slot = _decoded_slot(len(self._slots), entry, offset, position)
        if before and before.name == _SPARE and slot.name != _SPARE:
            raise FormatError("%s: a block follows a spare slot" % slot.describe())
        if slot.name == _INDEX_BLOCK:
            if slot.transformations != _INDEX_BLOCK_TRANSFORMATIONS:
                raise FormatError(
                    "%s: index block has transformations %d, not 32"
                    % (slot.describe(), slot.transformations)
                )
            if slot.size != _INDEX_BLOCK_SIZE:
                raise FormatError(
                    "%s: size of the index block is %d, not 27804" % (slot.describe(), slot.size)
                )
        if slot.end > self.file.size:
            raise IncompleteFileError(
                "incomplete: %s ends at byte %d, the file at byte %d"
                % (slot.describe(), slot.end, self.file.size)
            )
        self._slots.append(slot)

    def _check_end(self) -> None:
        end = self._slots[-1].end
        if end == self.file.size:
            return
        what = "%d bytes follow the last block, from byte %d" % (self.file.size - end, end)
        # The last blocks are missing from an index block that a writer did not come to write again.
        if len(self._slots) > _ROOT_COUNT:
            raise IncompleteFileError("incomplete: " + what)
        raise FormatError(what)


class _Block:
    """The content of one block.

    `length` is what a compressed block states. That it holds is known when all pieces were read.
    """

    __slots__ = ("_file", "_slot", "length")

    def __init__(self, file: _InputFile, slot: _Slot) -> None:
        self._file = file
        self._slot = slot
        self.length = slot.size
        if not slot.transformations & _COMPRESSED:
            return
        if slot.size < 4:
            raise self._error(
                "a compressed block of %d bytes has no room for its length" % slot.size
            )
        (self.length,) = struct.unpack("<I", file.read(slot.position, 4))
        if self.length > (slot.size - 4) * _GREATEST_EXPANSION:
            raise self._error(
                "%d compressed bytes cannot hold the stated %d bytes" % (slot.size - 4, self.length)
            )

    def pieces(self) -> Iterator[bytes]:
        """The content in pieces of bounded size; after the last one the block has been checked."""
        if self._slot.transformations & _COMPRESSED:
            return self._inflated()
        return self._input(self._slot.position, _OUTPUT_PIECE)

    def _input(self, position: int, piece: int) -> Iterator[bytes]:
        while position < self._slot.end:
            count = min(piece, self._slot.end - position)
            yield self._file.read(position, count)
            position += count

    def _inflated(self) -> Iterator[bytes]:
        inflater = zlib.decompressobj()
        source = self._input(self._slot.position + 4, _INPUT_PIECE)
        done = 0
        # The last piece is given out when the end of the stream has been checked.
        held = b""
        while not inflater.eof:
            # Room for one byte more than there may be shows a stream that goes on.
            piece = self._inflate(inflater, source, min(_OUTPUT_PIECE, self.length - done + 1))
            done += len(piece)
            if done > self.length:
                raise self._error(
                    "the zlib stream inflates to more than the stated %d bytes" % self.length
                )
            if piece and held:
                yield held
            held = piece or held
        if done < self.length:
            raise self._error(
                "the zlib stream inflates to %d bytes, not to the stated %d" % (done, self.length)
            )
        if inflater.unused_data or next(source, b""):
            raise self._error("bytes follow the zlib stream")
        if held:
            yield held

    def _inflate(self, inflater: Any, source: Iterator[bytes], room: int) -> bytes:
        waiting: bytes = inflater.unconsumed_tail or next(source, b"")
        try:
            piece: bytes = inflater.decompress(waiting, room)
        except zlib.error as reason:
            raise self._error("the zlib stream is damaged (%s)" % reason) from None
        # Without input there may still be output to come.
        if not waiting and not piece and not inflater.eof:
            raise self._error("the zlib stream ends early")
        return piece

    def _error(self, what: str) -> FormatError:
        return FormatError(self._slot.describe() + ": " + what)


# ---------------------------------------------------------------------------------------- streams

_U32 = struct.Struct("<I")
_U64 = struct.Struct("<Q")
_LEAST_STRING = 4


class _Stream:
    """The values of one key from front to end, as if all its blocks were a single one.

    Holds a piece of it at a time. Positions count the bytes of the inflated blocks.
    """

    def __init__(self, container: _Container, key: bytes) -> None:
        self._name = _quoted(_text(key))
        blocks = container.blocks_of(key)
        self.length = sum(block.length for block in blocks)
        self._pieces = (piece for block in blocks for piece in block.pieces())
        self._window = b""
        self._base = 0
        self._at = 0

    @property
    def position(self) -> int:
        return self._base + self._at

    @property
    def remaining(self) -> int:
        return self.length - self.position

    def place(self, position: int) -> str:
        return "byte %d of %s" % (position, self._name)

    def take(self, layout: struct.Struct) -> Tuple[Any, ...]:
        at = self._at
        if at + layout.size > len(self._window):
            self._fill(layout.size)
            at = self._at
        self._at = at + layout.size
        return layout.unpack_from(self._window, at)

    def raw(self, count: int) -> bytes:
        if self._at + count > len(self._window):
            self._fill(count)
        start = self._at
        self._at = start + count
        return self._window[start : self._at]

    def u32(self) -> int:
        value: int = self.take(_U32)[0]
        return value

    def u64(self) -> int:
        value: int = self.take(_U64)[0]
        return value

    def flag(self) -> bool:
        value = self.raw(1)[0]
        if value > 1:
            raise FormatError(
                "%s is %d, not a flag (0 or 1)" % (self.place(self.position - 1), value)
            )
        return value == 1

    def string(self) -> bytes:
        return self.raw(self.u32())

    def count(self, least_size: int, what: str) -> int:
        """A count of things of a least size, which the rest has to be able to hold."""
        start = self.position
        count = self.u32()
        if count > self.remaining // least_size:
            raise FormatError(
                "%s: %s %d is more than the remaining %d bytes can hold"
                % (self.place(start), what, count, self.remaining)
            )
        return count

    def skip_if_next(self, expected: bytes) -> bool:
        """Goes past these bytes if they come next and are at hand."""
        if not self._window.startswith(expected, self._at):
            return False
        self._at += len(expected)
        return True

    def expect_end(self) -> None:
        if self.remaining > 0:
            raise FormatError(
                "%d bytes of %s belong to no record, from byte %d"
                % (self.remaining, self._name, self.position)
            )
        # Blocks without content are reached by nothing else, but have to be sound as well.
        for _ in self._pieces:
            pass

    def _fill(self, count: int) -> None:
        """Makes the next bytes at hand, as far as there is content."""
        if count > self.remaining:
            raise FormatError(
                "%s: %d bytes are needed, %d are left"
                % (self.place(self.position), count, self.remaining)
            )
        pieces = [self._window[self._at :]]
        held = len(pieces[0])
        while held < count:
            piece = next(self._pieces, b"")
            if not piece:
                raise FormatError(
                    "%s: the blocks changed while they were read" % self.place(self.position)
                )
            pieces.append(piece)
            held += len(piece)
        self._base = self.position
        self._window = b"".join(pieces)
        self._at = 0


# ---------------------------------------------------------------------------------------- records

_EMPTY_ATTRIBUTES: Mapping[str, AttributeValue] = MappingProxyType({})
_EMPTY_LIST = bytes(24)
_TAG_UINT32, _TAG_FLOAT, _TAG_STRING, _TAG_DOUBLE = range(4)


def _read_attributes(stream: _Stream) -> Mapping[str, AttributeValue]:
    """Six vectors: names, tags, and the values of each tag in the order of the names."""
    if stream.skip_if_next(_EMPTY_LIST):
        return _EMPTY_ATTRIBUTES
    names = _read_attribute_names(stream)
    _require_count(stream, len(names), "attribute type tags")
    tags = stream.raw(len(names))
    if any(tag > _TAG_DOUBLE for tag in tags):
        raise FormatError(
            "%s: an attribute type tag is not 0 to 3" % stream.place(stream.position - len(tags))
        )
    values: Dict[int, Iterator[AttributeValue]] = {}
    for tag, code in ((_TAG_UINT32, "I"), (_TAG_FLOAT, "f"), (_TAG_DOUBLE, "d")):
        count = tags.count(tag)
        _require_count(stream, count, "attributes with tag %d" % tag)
        values[tag] = iter(stream.take(struct.Struct("<%d%s" % (count, code))))
    count = tags.count(_TAG_STRING)
    _require_count(stream, count, "string attributes")
    values[_TAG_STRING] = iter([_text(stream.string()) for _ in range(count)])
    return MappingProxyType({_text(name): next(values[tag]) for name, tag in zip(names, tags)})


def _read_attribute_names(stream: _Stream) -> List[bytes]:
    names: List[bytes] = []
    for _ in range(stream.count(_LEAST_STRING, "attribute count")):
        name = stream.string()
        if names and not names[-1] < name:
            raise FormatError(
                "%s: attribute %s does not come after %s in order"
                % (stream.place(stream.position), _quoted(_text(name)), _quoted(_text(names[-1])))
            )
        names.append(name)
    return names


def _require_count(stream: _Stream, expected: int, what: str) -> None:
    count = stream.u32()
    if count != expected:
        raise FormatError(
            "%s: count of the %s is %d, not %d"
            % (stream.place(stream.position - 4), what, count, expected)
        )


class _Record:
    """A record: framed by its size and version."""

    def __init__(self, stream: _Stream, version: bytes) -> None:
        self._stream = stream
        self._start = stream.position
        self._size = stream.u32()
        found = stream.string()
        if found != version:
            raise FormatError(
                "%s: record version is %s, not %s"
                % (stream.place(self._start + 4), _quoted(_text(found)), _quoted(_text(version)))
            )

    def finish(self) -> None:
        actual = self._stream.position - self._start
        if self._size != actual:
            raise FormatError(
                "%s: record size is %d, not %d"
                % (self._stream.place(self._start), self._size, actual)
            )


class Transform(NamedTuple):
    """Where a group places what is below it: scaled first, then turned, then moved."""

    #: x, y, z, in the units of the coordinates.
    translation: Tuple[float, float, float]
    #: Axis, then the angle in radians.
    rotation: Tuple[float, float, float, float]
    #: Factors along x, y, z.
    scale: Tuple[float, float, float]

    @property
    def matrix(self) -> Array:
        """4 x 4 doubles, which turn a column (x, y, z, 1) into the parent's coordinates."""
        result = np.eye(4)
        result[:3, :3] = self._turning() * np.array(self.scale)
        result[:3, 3] = self.translation
        return result

    def _turning(self) -> Array:
        axis, angle = np.array(self.rotation[:3], dtype=float), self.rotation[3]
        length = float(np.sqrt((axis * axis).sum()))
        # Without an axis there is nothing to turn about.
        if length == 0 or angle == 0:
            return np.eye(3)
        x, y, z = axis / length
        cross = np.array([[0, -z, y], [z, 0, -x], [-y, x, 0]])
        result: Array = np.eye(3) + np.sin(angle) * cross + (1 - np.cos(angle)) * (cross @ cross)
        return result


Color = Tuple[float, float, float, float]


class Material(NamedTuple):
    """How a shape looks. Colours are red, green, blue, alpha from 0 to 1."""

    diffuse: Color
    specular: Color
    emissive: Color
    ambient: Color
    transparency: float
    shininess: float
    flag: bool


_TRANSFORM = struct.Struct("<10f")
_MATERIAL = struct.Struct("<18f")


def _read_transform(light: _Stream) -> Transform:
    x, y, z, axis_x, axis_y, axis_z, angle, scale_x, scale_y, scale_z = light.take(_TRANSFORM)
    return Transform((x, y, z), (axis_x, axis_y, axis_z, angle), (scale_x, scale_y, scale_z))


def _read_material(resources: _Stream) -> Material:
    record = _Record(resources, b"0.3")
    numbers = resources.take(_MATERIAL)
    diffuse, specular, emissive, ambient = (_color(numbers, first) for first in (0, 4, 8, 12))
    transparency, shininess = numbers[16:]
    flag = resources.flag()
    if not flag:
        raise FormatError("the flag of a material is 0, not 1")
    record.finish()
    return Material(diffuse, specular, emissive, ambient, transparency, shininess, flag)


def _color(numbers: Tuple[float, ...], first: int) -> Color:
    red, green, blue, alpha = numbers[first : first + 4]
    return red, green, blue, alpha


class WritingRecord(NamedTuple):
    """Who wrote the file, and when."""

    text1: str
    text2: str
    #: Version of the format.
    format: str
    #: Local time, such as "Thu Nov 20 15:30:00 2025 UTC".
    time: str
    host: str
    user: str
    text: str


_LEAST_WRITING_RECORD = 39
_RESULT_ATTRIBUTES_SIZE = 96


def _read_global_information(stream: _Stream) -> List[WritingRecord]:
    records = []
    count = stream.count(_LEAST_WRITING_RECORD, "writing record count")
    if count == 0:
        raise FormatError("%s: there is no writing record" % stream.place(0))
    for _ in range(count):
        record = _Record(stream, b"0.1")
        writing = WritingRecord(*[_text(stream.string()) for _ in range(7)])
        if writing.format != "1.3":
            raise FormatError('format version is %s, not "1.3"' % _quoted(writing.format))
        record.finish()
        records.append(writing)
    for _ in range(stream.count(_RESULT_ATTRIBUTES_SIZE, "result attributes count")):
        stream.raw(_RESULT_ATTRIBUTES_SIZE)
    stream.expect_end()
    return records


# ------------------------------------------------------------------------------------------- tree

_WIDTHS = {1: 3, 4: 1, 5: 1, 6: 1, 9: 1, 12: 1, 13: 3, 14: 6, 15: 6, 16: 1, 17: 3, 18: 6, 19: 6}
_WIDTHS.update({20: 1, 21: 3, 22: 6, 23: 6, 24: 1, 25: 1, 26: 3, 27: 6, 28: 6})
_DTYPES = {1: np.dtype("<f4"), 5: np.dtype("<u4")}
_GREATEST_VALUE_COUNT = 0x7FFFFFFF
_STEP_SEPARATOR = "\x1e"
_LEAST_NODE = 44
_LEAST_VARIABLE = 18
_FAMILY = struct.Struct("<6I")
# number of values, width, two flags, two floats, flag, position: all but the ends are zero
_ARRAY = struct.Struct("<IB11sQ")
_LINK = struct.Struct("<II")
_KINDS = {
    (b"Group", b"0.4"): "group",
    (b"Shape", b"0.2"): "shape",
    (b"Geometry", b"0.7"): "geometry",
    (b"", b""): "empty",
}


class _Variable:
    """A dataset as it is registered on a geometry."""

    __slots__ = (
        "stored_name",
        "type",
        "element_code",
        "link",
        "value_count",
        "data_position",
        "vibration",
        "attributes",
        "target",
    )

    stored_name: str
    type: int
    element_code: int
    #: Id of the geometry that has the target, and the target's number there.
    link: Optional[Tuple[int, int]]
    value_count: int
    data_position: int
    vibration: bool
    attributes: Mapping[str, AttributeValue]
    #: Where the links end: the variable itself if it has values of its own.
    target: _Variable

    @property
    def width(self) -> int:
        return _WIDTHS[self.type]

    @property
    def byte_count(self) -> int:
        return 4 * self.value_count


def _read_variable(light: _Stream, attributes: _Stream) -> _Variable:
    variable = _Variable()
    variable.stored_name = _text(light.string())
    start = light.position
    word = light.u32()
    variable.type = word & 0xFFFFFF
    variable.element_code = word >> 24
    if variable.type not in _WIDTHS:
        raise FormatError("%s: unknown variable type %d" % (light.place(start), variable.type))
    if variable.element_code not in _DTYPES:
        raise FormatError(
            "%s: element code is %d, not 1 or 5" % (light.place(start), variable.element_code)
        )
    variable.link = None
    variable.target = variable
    if light.flag():
        variable.link = light.take(_LINK)  # type: ignore[assignment]
    else:
        _read_array(light, variable)
    variable.vibration = light.flag()
    variable.attributes = _read_attributes(attributes)
    if variable.link is not None and variable.attributes:
        raise FormatError("%s is linked and has attributes" % _quoted(variable.stored_name))
    return variable


def _read_array(light: _Stream, variable: _Variable) -> None:
    place = light.place(light.position)
    count, width, zeros, variable.data_position = light.take(_ARRAY)
    variable.value_count = count
    if width != variable.width:
        raise FormatError(
            "%s: width is %d, not %d as variable type %d has it"
            % (place, width, variable.width, variable.type)
        )
    if count > _GREATEST_VALUE_COUNT or count % width != 0:
        raise FormatError(
            "%s: value count %d is not a whole number of rows of width %d" % (place, count, width)
        )
    if zeros.strip(b"\0"):
        raise FormatError("%s: a flag or number of the array is not 0" % place)


class _NodeData:
    """One node of the tree as it stands in the file. Ids are 0 where there is none."""

    __slots__ = (
        "id",
        "parent",
        "previous_sibling",
        "next_sibling",
        "first_child",
        "last_child",
        "name",
        "kind",
        "transform",
        "flag",
        "material",
        "attributes",
        "variables",
    )

    id: int
    parent: int
    previous_sibling: int
    next_sibling: int
    first_child: int
    last_child: int
    name: str
    kind: str
    transform: Optional[Transform]
    flag: bool
    material: Optional[Material]
    attributes: Mapping[str, AttributeValue]
    variables: Dict[str, _Variable]


_NO_VARIABLES: Dict[str, _Variable] = {}


class _TreeLoader:
    """Reads the four streams that make up the tree, front to end, side by side."""

    def __init__(self, container: _Container) -> None:
        self._tree = _Stream(container, b"Mox Tree")
        self._light = _Stream(container, b"Light Data")
        self._attributes = _Stream(container, b"Attributes")
        self._resources = _Stream(container, b"Resources")
        self._streams = (self._tree, self._light, self._attributes, self._resources)

    @property
    def byte_count(self) -> int:
        return sum(stream.length for stream in self._streams)

    def load(self) -> List[_NodeData]:
        count = self._tree.count(_LEAST_NODE, "node count")
        if count == 0:
            raise FormatError("%s: node count is 0" % self._tree.place(0))
        nodes = []
        for ident in range(1, count + 1):
            try:
                nodes.append(self._read_node(ident))
            except FormatError as reason:
                raise FormatError("node %d: %s" % (ident, reason)) from None
        for stream in self._streams:
            stream.expect_end()
        _check_families(nodes)
        _check_kinds(nodes)
        return nodes

    def _read_node(self, ident: int) -> _NodeData:
        node = _NodeData()
        self._read_family(node, ident)
        node.name = _text(self._tree.string())
        self._read_kind(node)
        position = self._tree.u64()
        if position != self._light.position:
            raise FormatError(
                "%s: light position is %d, not %d"
                % (self._tree.place(self._tree.position - 8), position, self._light.position)
            )
        self._read_content(node)
        return node

    def _read_family(self, node: _NodeData, ident: int) -> None:
        (
            node.id,
            node.parent,
            node.previous_sibling,
            node.next_sibling,
            node.first_child,
            node.last_child,
        ) = self._tree.take(_FAMILY)
        if node.id != ident:
            raise FormatError("id is %d, not %d" % (node.id, ident))
        if ident == 1 and node.parent != 0:
            raise FormatError("parent of the root is %d, not 0" % node.parent)
        if ident > 1 and not 0 < node.parent < ident:
            raise FormatError("parent is %d, not an earlier node" % node.parent)

    def _read_kind(self, node: _NodeData) -> None:
        kind, version = self._tree.string(), self._tree.string()
        if (kind, version) not in _KINDS:
            raise FormatError(
                "type %s of version %s is unknown" % (_quoted(_text(kind)), _quoted(_text(version)))
            )
        node.kind = _KINDS[kind, version]
        if node.kind == "empty" and node.name:
            raise FormatError("a node without type has the name %s" % _quoted(node.name))

    def _read_content(self, node: _NodeData) -> None:
        node.transform = None
        node.flag = False
        node.material = None
        node.attributes = _EMPTY_ATTRIBUTES
        node.variables = _NO_VARIABLES
        if node.kind == "group":
            node.transform = _read_transform(self._light)
            node.flag = self._light.flag()
            node.attributes = _read_attributes(self._attributes)
        elif node.kind == "shape":
            node.material = _read_material(self._resources)
        elif node.kind == "geometry":
            node.variables = self._read_variables()

    def _read_variables(self) -> Dict[str, _Variable]:
        variables: Dict[str, _Variable] = {}
        for number in range(self._light.count(_LEAST_VARIABLE, "variable count")):
            try:
                variable = _read_variable(self._light, self._attributes)
            except FormatError as reason:
                raise FormatError("variable %d: %s" % (number, reason)) from None
            if variable.stored_name in variables:
                raise FormatError(
                    "variable %d: there is another variable %s before"
                    % (number, _quoted(variable.stored_name))
                )
            variables[variable.stored_name] = variable
        return variables


def _check_families(nodes: List[_NodeData]) -> None:
    """The parents alone determine all other relations: ids are given as nodes are added."""
    first_child = [0] * (len(nodes) + 1)
    last_child = [0] * (len(nodes) + 1)
    next_sibling = [0] * (len(nodes) + 1)
    for node in nodes:
        previous = last_child[node.parent]
        if node.previous_sibling != previous:
            raise FormatError(
                "node %d: previous sibling is %d, not %d"
                % (node.id, node.previous_sibling, previous)
            )
        if previous == 0:
            first_child[node.parent] = node.id
        else:
            next_sibling[previous] = node.id
        last_child[node.parent] = node.id
    for node in nodes:
        for relation, found, expected in (
            ("next sibling", node.next_sibling, next_sibling[node.id]),
            ("first child", node.first_child, first_child[node.id]),
            ("last child", node.last_child, last_child[node.id]),
        ):
            if found != expected:
                raise FormatError(
                    "node %d: %s is %d, not %d" % (node.id, relation, found, expected)
                )


def _check_kinds(nodes: List[_NodeData]) -> None:
    """What kinds of nodes there may be, and where."""
    with_geometry = set()
    for node in nodes:
        parent = nodes[node.parent - 1] if node.parent else None
        if node.kind == "empty" and len(nodes) > 1:
            raise FormatError("node %d: a node that is not alone has no type" % node.id)
        if node.kind == "group" and node.flag and parent is not None:
            raise FormatError("node %d: the flag of a group below the root is 1" % node.id)
        if node.kind != "geometry":
            continue
        if parent is None or parent.kind != "shape" or parent.parent == 0:
            raise FormatError(
                "node %d: the parent of a geometry is no shape below the root" % node.id
            )
        if node.name != parent.name:
            raise FormatError(
                "node %d: the name of the geometry is %s, not %s as that of its shape"
                % (node.id, _quoted(node.name), _quoted(parent.name))
            )
        if parent.id in with_geometry:
            raise FormatError("node %d: its shape has another geometry before" % node.id)
        with_geometry.add(parent.id)


def _follow_links(nodes: List[_NodeData]) -> None:
    """Finds where the links of each variable end."""
    lists = {node.id: list(node.variables.values()) for node in nodes if node.variables}
    ended = set()
    for ident, variables in lists.items():
        for variable in variables:
            walked: Dict[_Variable, None] = {}
            current = variable
            while current.link is not None and current not in ended:
                if current in walked:
                    raise FormatError(
                        "node %d: %s: its links run in a circle"
                        % (ident, _quoted(variable.stored_name))
                    )
                walked[current] = None
                owner, number = current.link
                if number >= len(lists.get(owner, ())):
                    raise FormatError(
                        "node %d: %s: link to variable %d of node %d, which does not exist"
                        % (ident, _quoted(current.stored_name), number, owner)
                    )
                current = lists[owner][number]
            for link in walked:
                link.target = current.target
                ended.add(link)


def _check_extents(nodes: List[_NodeData], heavy: _HeavyData) -> None:
    """A dataset lies within one block; two are the same piece or have no byte in common."""
    extents = []
    for node in nodes:
        for variable in node.variables.values():
            if variable.link is not None:
                continue
            if not heavy.contains(variable.data_position, variable.byte_count):
                raise FormatError(
                    "node %d: %s: its %d bytes at %d are not within one block of the %d bytes of "
                    '"Heavy Data"'
                    % (
                        node.id,
                        _quoted(variable.stored_name),
                        variable.byte_count,
                        variable.data_position,
                        heavy.length,
                    )
                )
            if variable.byte_count > 0:
                extents.append((variable.data_position, variable.byte_count, node.id))
    extents.sort()
    for (start, length, _), (other, other_length, ident) in zip(extents, extents[1:]):
        if (start, length) != (other, other_length) and other < start + length:
            raise FormatError(
                "node %d: the values of a dataset at %d overlap those of another one"
                % (ident, other)
            )


# ----------------------------------------------------------------------------------------- values


class _HeavyData:
    """The values of all datasets. Keeps the blocks that were used last, within a bound."""

    def __init__(self, container: _Container, cache_bytes: int) -> None:
        self._blocks = container.blocks_of(_HEAVY_DATA)
        self._starts = []
        self.length = 0
        for block in self._blocks:
            self._starts.append(self.length)
            self.length += block.length
        self._bound = cache_bytes
        self._kept: OrderedDict[int, Bytes] = OrderedDict()
        self._lock = threading.Lock()

    def contains(self, position: int, count: int) -> bool:
        """Whether these bytes exist and lie in one block."""
        if count == 0:
            return position <= self.length
        if position >= self.length:
            return False
        number = self._find(position)
        return count <= self._starts[number] + self._blocks[number].length - position

    def read(self, position: int, count: int) -> Bytes:
        """Bytes that `contains` agrees to, after the whole block was found sound."""
        if position >= self.length:
            return np.empty(0, np.uint8)
        number = self._find(position)
        start = position - self._starts[number]
        with self._lock:
            if self._blocks[number].length > self._bound:
                return self._extract(self._blocks[number], start, count)
            return self._load(number)[start : start + count]

    def check(self) -> None:
        for block in self._blocks:
            for _ in block.pieces():
                pass

    def forget(self) -> None:
        with self._lock:
            self._kept.clear()

    @property
    def kept_bytes(self) -> int:
        return sum(len(content) for content in self._kept.values())

    def _find(self, position: int) -> int:
        # The last of the blocks that start there or before: empty ones share their start with the
        # one that follows.
        return bisect.bisect_right(self._starts, position) - 1

    def _load(self, number: int) -> Bytes:
        if number in self._kept:
            self._kept.move_to_end(number)
            return self._kept[number]
        block = self._blocks[number]
        while self._kept and self.kept_bytes + block.length > self._bound:
            self._kept.popitem(last=False)
        # What the block states is reserved, but within the bound, and touched only when filled.
        content = np.empty(block.length, np.uint8)
        done = 0
        for piece in block.pieces():
            content[done : done + len(piece)] = np.frombuffer(piece, np.uint8)
            done += len(piece)
        self._kept[number] = content
        return content

    @staticmethod
    def _extract(block: _Block, start: int, count: int) -> Bytes:
        """A part of a block too large to be kept: memory grows with what is really there."""
        result = bytearray()
        done = 0
        for piece in block.pieces():
            if done < start + count and done + len(piece) > start:
                result += piece[max(0, start - done) : start + count - done]
            done += len(piece)
        return np.frombuffer(result, np.uint8)


# So few rows that all that they are scattered over stays in the processor's cache.
_UNSHUFFLED_ROWS = 1 << 14


def _unshuffled(raw: Bytes, rows: int, width: int, dtype: np.dtype[Any]) -> Array:
    """Values from columns of four planes of bytes each, the lowest bytes first."""
    result = np.empty((rows, width, 4), np.uint8)
    planes = raw.reshape(width, 4, rows)
    for first in range(0, rows, _UNSHUFFLED_ROWS):
        piece = slice(first, first + _UNSHUFFLED_ROWS)
        for column in range(width):
            for byte in range(4):
                result[piece, column, byte] = planes[column, byte, piece]
    values: Array = result.reshape(rows, width * 4).view(dtype)
    return values.reshape(rows) if width == 1 else values


# ------------------------------------------------------------------------------------------ model


class _InFile:
    """Names the file in every error, and gives a lack of memory its kind."""

    def __init__(self, name: str) -> None:
        self._name = name

    def __enter__(self) -> None:
        pass

    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        reason: Optional[BaseException],
        _: Optional[TracebackType],
    ) -> None:
        if isinstance(reason, Error):
            raise type(reason)("%s: %s" % (self._name, reason)) from None
        if isinstance(reason, MemoryError):
            raise OutOfMemoryError("%s: memory is exhausted" % self._name) from None


class Dataset:
    """An array of a node: for each row, `width` values.

    What describes it is known without reading its values.
    """

    __slots__ = ("node", "_variable")

    def __init__(self, node: Node, variable: _Variable) -> None:
        #: The node that it is on: the shape, unless it was asked of the geometry itself.
        self.node = node
        self._variable = variable

    @property
    def name(self) -> str:
        """Its name, without that of the step."""
        return self._variable.stored_name.partition(_STEP_SEPARATOR)[0]

    @property
    def step(self) -> Optional[str]:
        """Name of the step that it belongs to; None if it belongs to none."""
        _, separator, step = self._variable.stored_name.partition(_STEP_SEPARATOR)
        return step if separator else None

    @property
    def key(self) -> DatasetKey:
        """What its node has it under: the name, or the name and that of the step."""
        step = self.step
        return self.name if step is None else (self.name, step)

    @property
    def type(self) -> int:
        """How the values are laid out: the variable type of docs/model-layout.md, 1 to 28."""
        return self._variable.type

    @property
    def width(self) -> int:
        """Number of values in a row: 1, 3 or 6."""
        return self._variable.target.width

    @property
    def rows(self) -> int:
        """Number of rows."""
        return self._variable.target.value_count // self.width

    @property
    def shape(self) -> Tuple[int, ...]:
        """Shape of the array: (rows,) where the width is 1, else (rows, width)."""
        return (self.rows,) if self.width == 1 else (self.rows, self.width)

    @property
    def dtype(self) -> np.dtype[Any]:
        """Type of the array: float32 or uint32, little-endian."""
        return _DTYPES[self._variable.target.element_code]

    @property
    def nbytes(self) -> int:
        """Memory that the array takes, in bytes."""
        return self._variable.target.byte_count

    @property
    def vibration(self) -> bool:
        """Whether it belongs to a mode of vibration."""
        return self._variable.vibration

    @property
    def attributes(self) -> Mapping[str, AttributeValue]:
        """Its attributes, those of its step among them; none for one that shares others' values."""
        return self._variable.attributes

    @property
    def link(self) -> Optional[Dataset]:
        """The dataset whose values it shares; None if it has its own."""
        if self._variable.link is None:
            return None
        ident, number = self._variable.link
        geometry = self.node.file.node(ident)
        owner = geometry.parent
        node = owner if owner is not None and owner._geometry() is geometry._data else geometry
        return Dataset(node, list(geometry._data.variables.values())[number])

    def read(self) -> Array:
        """Its values, in an array of their own of that shape and type.

        Raises `FormatError` when the block with the values is damaged, `OutOfMemoryError` when they
        don't fit into memory, and `FileError` when the file can't be read or was closed.
        """
        return self.node.file._values(self._variable.target)

    def __repr__(self) -> str:
        return "<Dataset %r %s %s>" % (self.key, self.dtype.name, self.shape)


class Node(Mapping[DatasetKey, "Array"]):
    """A node of the tree, and a mapping of its datasets: name, or name and step, to an array.

        node["Coordinates"]               # of no step
        node["Displacement", "Load 1"]    # of the step "Load 1"

    The array is read each time, and is the caller's own: (rows,) or (rows, width), of float32 or
    uint32. Where there is no such dataset, `MissingKeyError` is raised; otherwise what
    `Dataset.read` raises. A shape has the datasets of its geometry.
    """

    __slots__ = ("file", "_data")

    def __init__(self, file: File, data: _NodeData) -> None:
        #: The file that it is in.
        self.file = file
        self._data = data

    @property
    def id(self) -> int:
        """Its number, from 1, the root's."""
        return self._data.id

    @property
    def name(self) -> str:
        """Its name. Bytes that are no UTF-8 are single surrogates (surrogateescape)."""
        return self._data.name

    @property
    def kind(self) -> str:
        """ "group", "shape", "geometry", or "empty" for a node that never got a content."""
        return self._data.kind

    @property
    def path(self) -> str:
        """The names from the root down, joined by "/"; equal for equally named siblings."""
        names = []
        data = self._data
        while True:
            names.append(data.name.replace("\\", "\\\\").replace("/", "\\/"))
            if data.parent == 0:
                break
            data = self.file._nodes[data.parent - 1]
        path = "/".join(reversed(names))
        return "\\" + path if path.startswith("#") else path

    @property
    def parent(self) -> Optional[Node]:
        """The node above; None for the root."""
        return self.file.node(self._data.parent) if self._data.parent else None

    @property
    def children(self) -> List[Node]:
        """The nodes below, in the order of their ids; a shape's first one is its geometry."""
        result = []
        ident = self._data.first_child
        while ident:
            result.append(self.file.node(ident))
            ident = self.file._nodes[ident - 1].next_sibling
        return result

    @property
    def attributes(self) -> Mapping[str, AttributeValue]:
        """The attributes of a group; other nodes have none."""
        return self._data.attributes

    @property
    def transform(self) -> Optional[Transform]:
        """Where a group places what is below it; None for other nodes."""
        return self._data.transform

    @property
    def matrix(self) -> Array:
        """4 x 4 doubles, which turn coordinates (x, y, z, 1) of this node into those of the model.

        The product of the transforms of all groups from the root down to the node.
        """
        result: Array = np.eye(4)
        data = self._data
        while True:
            if data.transform is not None:
                result = data.transform.matrix @ result
            if data.parent == 0:
                return result
            data = self.file._nodes[data.parent - 1]

    @property
    def material(self) -> Optional[Material]:
        """The material of a shape; None for other nodes."""
        return self._data.material

    @property
    def flag(self) -> bool:
        """Whether it is a root that was added as a flagged one."""
        return self._data.flag

    @property
    def datasets(self) -> List[Dataset]:
        """Its datasets, in the order in which they were registered."""
        return [Dataset(self, variable) for variable in self._variables().values()]

    @property
    def steps(self) -> List[str]:
        """Names of the steps of its datasets, in the order of their first one."""
        steps = (dataset.step for dataset in self.datasets)
        return list(OrderedDict.fromkeys(step for step in steps if step is not None))

    def dataset(self, name: str, step: Optional[str] = None) -> Dataset:
        """One of its datasets, whose values are not read; `MissingKeyError` if there is none."""
        return self._find(name if step is None else (name, step))

    def __getitem__(self, key: DatasetKey) -> Array:
        return self._find(key).read()

    def __iter__(self) -> Iterator[DatasetKey]:
        return (dataset.key for dataset in self.datasets)

    def __len__(self) -> int:
        return len(self._variables())

    def __bool__(self) -> bool:
        # A node without datasets is one, as `if node.parent` wants it.
        return True

    def __contains__(self, key: object) -> bool:
        return self._stored_name(key) in self._variables()

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Node) and self._data is other._data

    def __hash__(self) -> int:
        return hash((id(self.file), self._data.id))

    def __repr__(self) -> str:
        return "<%s %d %s>" % (self.kind.capitalize(), self.id, _quoted(self.path))

    def _find(self, key: DatasetKey) -> Dataset:
        name = self._stored_name(key)
        variable = None if name is None else self._variables().get(name)
        if variable is None:
            raise MissingKeyError("%s has no dataset %r" % (_quoted(self.path), key))
        return Dataset(self, variable)

    @staticmethod
    def _stored_name(key: object) -> Optional[str]:
        """None for what is no key."""
        if isinstance(key, str) and _STEP_SEPARATOR not in key:
            return key
        if isinstance(key, tuple) and len(key) == 2 and all(isinstance(part, str) for part in key):
            return _STEP_SEPARATOR.join(key)
        return None

    def _geometry(self) -> Optional[_NodeData]:
        """The node that carries the datasets."""
        if self._data.kind == "geometry":
            return self._data
        if self._data.kind != "shape" or self._data.first_child == 0:
            return None
        child = self.file._nodes[self._data.first_child - 1]
        return child if child.kind == "geometry" else None

    def _variables(self) -> Dict[str, _Variable]:
        geometry = self._geometry()
        return _NO_VARIABLES if geometry is None else geometry.variables


class Step(NamedTuple):
    """A step of the results."""

    name: str
    #: The attributes that all its datasets have alike, "Time" or "Frequency" for instance.
    attributes: Mapping[str, AttributeValue]
    #: Its datasets, over all nodes.
    datasets: List[Dataset]


class _PathIndex:
    """Finds nodes by their paths. Nodes of the same path have the same number."""

    def __init__(self, nodes: List[_NodeData]) -> None:
        self._numbers: Dict[Tuple[int, str], int] = {}
        self._ids: List[List[int]] = []
        self._of_node = [-1]
        for node in nodes:
            key = (self._of_node[node.parent], node.name)
            number = self._numbers.setdefault(key, len(self._ids))
            if number == len(self._ids):
                self._ids.append([])
            self._ids[number].append(node.id)
            self._of_node.append(number)

    def find(self, names: List[str]) -> List[int]:
        number = -1
        for name in names:
            found = self._numbers.get((number, name))
            if found is None:
                return []
            number = found
        return self._ids[number]

    def is_only(self, ident: int) -> bool:
        return len(self._ids[self._of_node[ident]]) == 1


def _split_path(path: str) -> List[str]:
    names = [""]
    characters = iter(path)
    for character in characters:
        if character == "/":
            names.append("")
            continue
        if character == "\\":
            character = next(characters, "")
            if not character:
                raise MissingKeyError(
                    '%s is no path: nothing follows the last "\\"' % _quoted(path)
                )
        names[-1] += character
    return names


class File(Mapping[str, Node]):
    """A model in a file, and a mapping of paths to its nodes.

    A path is made of the names from the root down, joined by "/", such as "Beam/Steel". A "/" or
    a backslash inside a name, and a "#" at the beginning of the root's name, is preceded by a
    backslash. "#" and an id is a path, too: "#2". Nodes of the same path are listed by their ids.
    The geometries that carry the datasets of shapes are not listed, as the shapes have these
    datasets; their paths and ids work nevertheless.

    Use it in a `with` statement, or call `close`. Several threads may read from it.
    """

    def __init__(
        self,
        path: PathLike,
        *,
        cache_bytes: int = DEFAULT_CACHE_BYTES,
        tree_bytes: int = DEFAULT_TREE_BYTES,
    ) -> None:
        self._in_file = _InFile(os.fsdecode(path))
        self._paths: Optional[_PathIndex] = None
        self._steps: Optional[Dict[str, Step]] = None
        with self._in_file:
            self._input = _InputFile(path)
            try:
                self._load(cache_bytes, tree_bytes)
            except BaseException:
                self._input.close()
                raise

    def _load(self, cache_bytes: int, tree_bytes: int) -> None:
        container = _Container(self._input)
        information = _Stream(container, b"Global Information")
        loader = _TreeLoader(container)
        byte_count = loader.byte_count + information.length
        if byte_count > tree_bytes:
            raise OutOfMemoryError(
                "all but the values are %d bytes, more than the bound of %d (tree_bytes)"
                % (byte_count, tree_bytes)
            )
        self._nodes = loader.load()
        self._writings = _read_global_information(information)
        self._heavy = _HeavyData(container, cache_bytes)
        # The key is reserved; nothing is known that could stand there.
        _Stream(container, b"View Points").expect_end()
        _follow_links(self._nodes)
        _check_extents(self._nodes, self._heavy)

    @property
    def root(self) -> Node:
        """The node that all others are below."""
        return self.node(1)

    @property
    def writings(self) -> List[WritingRecord]:
        """Who wrote the file, and when: one record, unless others were added later."""
        return list(self._writings)

    @property
    def steps(self) -> Mapping[str, Step]:
        """The steps by their names, in the order in which they are met in the tree."""
        if self._steps is None:
            self._steps = _steps_of(self)
        return MappingProxyType(self._steps)

    def node(self, ident: int) -> Node:
        """The node of an id, from 1; `MissingKeyError` if there is none."""
        if not 0 < ident <= len(self._nodes):
            raise MissingKeyError("no node has the id %d" % ident)
        return Node(self, self._nodes[ident - 1])

    def nodes(self) -> Iterator[Node]:
        """All nodes in the order of their ids, geometries too."""
        return (Node(self, data) for data in self._nodes)

    def check(self) -> None:
        """Reads all blocks of values, as `mox verify` does, and keeps none.

        Opening has checked everything else. Raises `FormatError` when a block is damaged: it may
        be one that holds no dataset.
        """
        with self._in_file:
            self._heavy.check()

    def close(self) -> None:
        """Closes the file and frees the blocks that were kept. What was read stays."""
        self._input.close()
        self._heavy.forget()

    def __enter__(self) -> File:
        return self

    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        reason: Optional[BaseException],
        traceback: Optional[TracebackType],
    ) -> None:
        self.close()

    def __getitem__(self, path: str) -> Node:
        found = self._find(path)
        if not found:
            raise MissingKeyError("no node has the path %s" % _quoted(path))
        if len(found) > 1:
            listed = ", ".join("#%d" % ident for ident in found[:20])
            more = " and %d more" % (len(found) - 20) if len(found) > 20 else ""
            raise AmbiguousPathError(
                "several nodes have the path %s: %s%s" % (_quoted(path), listed, more)
            )
        return self.node(found[0])

    def __iter__(self) -> Iterator[str]:
        for node in self.nodes():
            if not self._is_geometry_of_shape(node._data):
                only = self._path_index().is_only(node.id)
                yield node.path if only else "#%d" % node.id

    def __len__(self) -> int:
        return sum(not self._is_geometry_of_shape(data) for data in self._nodes)

    def __eq__(self, other: object) -> bool:
        return self is other

    def __hash__(self) -> int:
        return id(self)

    def __repr__(self) -> str:
        return "<File of %d nodes, root %s>" % (len(self._nodes), _quoted(self._nodes[0].name))

    def _is_geometry_of_shape(self, data: _NodeData) -> bool:
        if data.kind != "geometry" or data.parent == 0:
            return False
        parent = self._nodes[data.parent - 1]
        return parent.kind == "shape" and parent.first_child == data.id

    def _path_index(self) -> _PathIndex:
        if self._paths is None:
            self._paths = _PathIndex(self._nodes)
        return self._paths

    def _find(self, path: str) -> List[int]:
        if not isinstance(path, str):
            raise MissingKeyError("%r is no path" % (path,))
        if not path.startswith("#"):
            return self._path_index().find(_split_path(path))
        digits = path[1:]
        if not (digits.isascii() and digits.isdigit()):
            raise MissingKeyError(
                '%s is no path: behind "#" there has to be a node\'s id' % _quoted(path)
            )
        # Longer ones are no ids, and take long to convert.
        ident = int(digits) if len(digits) <= 20 else 0
        return [ident] if 0 < ident <= len(self._nodes) else []

    def _values(self, stored: _Variable) -> Array:
        width = stored.width
        with self._in_file:
            raw = self._heavy.read(stored.data_position, stored.byte_count)
            dtype = _DTYPES[stored.element_code]
            return _unshuffled(raw, stored.value_count // width, width, dtype)


def open(
    path: PathLike,
    *,
    cache_bytes: int = DEFAULT_CACHE_BYTES,
    tree_bytes: int = DEFAULT_TREE_BYTES,
) -> File:
    """Opens a model file and checks everything in it but the values of the datasets.

    path         path of the file
    cache_bytes  how many bytes of inflated blocks are kept at most. A block has 200 MiB unless its
                 writer was set otherwise; one that is larger than the bound is inflated anew for
                 each dataset that is read from it, of which no more than the dataset is in memory.
    tree_bytes   bound on the bytes of everything but the values, which is read as a whole and takes
                 several times as much in memory: a file may hold 1000 times its own size

    Raises `FormatError` for a file that is damaged or no model file, `IncompleteFileError` when its
    writer never closed it, `FileError` when it can't be opened, `OutOfMemoryError` when it goes
    beyond memory or `tree_bytes`.
    """
    return File(path, cache_bytes=cache_bytes, tree_bytes=tree_bytes)


def _steps_of(file: File) -> Dict[str, Step]:
    datasets: Dict[str, List[Dataset]] = {}
    for node in file.nodes():
        if not node._data.variables:
            continue
        parent = node.parent
        is_of_shape = parent is not None and file._is_geometry_of_shape(node._data)
        owner = parent if parent is not None and is_of_shape else node
        for dataset in owner.datasets:
            step = dataset.step
            if step is not None:
                datasets.setdefault(step, []).append(dataset)
    return {name: Step(name, _common_attributes(some), some) for name, some in datasets.items()}


def _is_same(left: AttributeValue, right: AttributeValue) -> bool:
    # A time that is no number is the same as another such.
    return left == right or (left != left and right != right)


def _common_attributes(datasets: List[Dataset]) -> Mapping[str, AttributeValue]:
    # A linked dataset has no attributes of its own.
    all_attributes = [dataset.attributes for dataset in datasets if dataset.link is None]
    if not all_attributes:
        return _EMPTY_ATTRIBUTES
    common = dict(all_attributes[0])
    for attributes in all_attributes[1:]:
        common = {
            name: value
            for name, value in common.items()
            if name in attributes and _is_same(attributes[name], value)
        }
    return MappingProxyType(common)


# ----------------------------------------------------------------------------------------- meshio

_MESHIO_TYPES = {
    (1, 1): "vertex",
    (1, 2): "line",
    (1, 3): "line3",
    (1, 4): "line4",
    (2, 3): "triangle",
    (2, 4): "quad",
    (2, 6): "triangle6",
    (2, 7): "triangle7",
    (2, 8): "quad8",
    (2, 9): "quad9",
    (3, 4): "tetra",
    (3, 5): "pyramid",
    (3, 6): "wedge",
    (3, 8): "hexahedron",
    (3, 10): "tetra10",
    (3, 13): "pyramid13",
    (3, 15): "wedge15",
    (3, 18): "wedge18",
    (3, 20): "hexahedron20",
    (3, 24): "hexahedron24",
    (3, 27): "hexahedron27",
}
#: Types that dimension and number of nodes do not tell; 0 for any number.
_MESHIO_NAMED_TYPES = {
    ("Polygon", 0): "polygon",
    ("Quadratic linear quad", 6): "quad6",
    ("Quadrangle 6", 6): "quad6",
    ("Quadratic linear wedge", 12): "wedge12",
    ("Wedge 12", 12): "wedge12",
    ("Pentagonal prism", 10): "penta_prism",
    ("Hexagonal prism", 12): "hexa_prism",
}
# A model's wedge has its bottom counter-clockwise as seen from the top. So has meshio's linear one,
# which meshio itself turns when it writes VTK's formats; the others it takes as VTK defines them,
# whose bottom is seen counter-clockwise from outside.
_CORNERS = [0, 2, 1, 3, 5, 4]
_MESHIO_ORDERS = {
    "wedge12": _CORNERS + [8, 7, 6, 11, 10, 9],
    "wedge15": _CORNERS + [8, 7, 6, 11, 10, 9, 12, 14, 13],
    "wedge18": _CORNERS + [8, 7, 6, 11, 10, 9, 12, 14, 13, 17, 16, 15],
}
_KNOWN_TO_MESHIO = {1: "line", 2: "triangle", 3: "tetra"}
_COORDINATES = 1
_CONNECTIVITIES = (4, 5, 6)
_POLYLENGTH = 9
_ON_NODES = range(12, 16)
_ON_ELEMENTS = range(16, 20)


def to_meshio(node: Node, step: Optional[str] = None) -> Any:
    """The mesh of a shape, with its results, as a `meshio.Mesh`. meshio has to be installed.

    node   a shape with coordinates; its values are taken as they are, in the shape's own system
           (`node.matrix` leads to the model's)
    step   name of the step whose results are wanted, beside those of no step; its coordinates, too,
           where it has some

    Results on nodes (variable types 12 to 15) become `point_data`, those on elements (16 to 19)
    `cell_data`, under the datasets' names. Elements of the same number of nodes are one block, in
    their order; a shape without elements has a vertex for each node. Nodes of an element are in
    meshio's order.

    A dataset that has no place in a mesh is left out with a warning. Raises `MissingKeyError` when
    no dataset of the node is of that step, `MeshError` when the datasets make no mesh, and what
    `Dataset.read` raises.
    """
    meshio = importlib.import_module("meshio")
    datasets = _datasets_of_step(node, step)
    coordinates = _picked(datasets, "Coordinates", (_COORDINATES,), step)
    if coordinates is None:
        raise MeshError("%s has no coordinates" % _quoted(node.path))
    blocks = _cell_blocks(node, datasets, coordinates.rows)
    element_count = sum(len(block.rows) for block in blocks)
    point_data: Dict[str, Array] = {}
    cell_data: Dict[str, List[Array]] = {}
    # Those of the step come last, and take the place of equally named ones of no step.
    for dataset in datasets:
        if dataset.type in _ON_NODES and dataset.rows == coordinates.rows:
            point_data[dataset.name] = dataset.read()
        elif dataset.type in _ON_ELEMENTS and 0 < dataset.rows == element_count:
            values = dataset.read()
            cell_data[dataset.name] = [values[block.rows] for block in blocks]
        elif dataset.type > _POLYLENGTH:
            warnings.warn("%r has no place in a mesh and is left out" % dataset, stacklevel=2)
    return meshio.Mesh(
        coordinates.read().astype(np.float32, copy=False),
        [_meshio_block(meshio, block) for block in blocks],
        point_data=point_data,
        cell_data=cell_data,
    )


def _datasets_of_step(node: Node, step: Optional[str]) -> List[Dataset]:
    datasets = [dataset for dataset in node.datasets if dataset.step is None]
    if step is None:
        return datasets
    of_step = [dataset for dataset in node.datasets if dataset.step == step]
    if not of_step:
        raise MissingKeyError("%s has no step %s" % (_quoted(node.path), _quoted(step)))
    return datasets + of_step


def _picked(
    datasets: List[Dataset], usual_name: str, types: Tuple[int, ...], step: Optional[str] = None
) -> Optional[Dataset]:
    """The dataset of one of the types: of the step, and of the usual name, if there is one."""
    candidates = [dataset for dataset in datasets if dataset.type in types]
    candidates.sort(key=lambda dataset: (dataset.step != step, dataset.name != usual_name))
    return candidates[0] if candidates else None


class _CellBlock(NamedTuple):
    """The elements of one type."""

    type: str
    dimension: int
    #: Numbers of the elements, as their results are ordered.
    rows: Array
    #: A row of nodes for each element.
    nodes: Array


def _cell_blocks(node: Node, datasets: List[Dataset], node_count: int) -> List[_CellBlock]:
    constant = [dataset for dataset in datasets if dataset.step is None]
    # Laid out alike, but it names elements.
    candidates = [dataset for dataset in constant if dataset.name != "Part Elements"]
    connectivity = _picked(candidates, "Connectivity", _CONNECTIVITIES)
    polylength = _picked(constant, "Polylength", (_POLYLENGTH,))
    if connectivity is None or polylength is None:
        rows = np.arange(node_count)
        # These stand in for elements, but have no results.
        return [_CellBlock("vertex", 1, rows[:0], rows.reshape(-1, 1))]
    dimension = 1 + _CONNECTIVITIES.index(connectivity.type)
    stored = connectivity._variable.target
    element_type = str(stored.attributes.get("ElementType", ""))
    nodes, lengths = _checked_elements(node, connectivity, polylength, node_count)
    starts = np.cumsum(lengths) - lengths
    blocks = []
    for length in np.unique(lengths).tolist():
        name = _meshio_type(node, dimension, length, element_type)
        rows = np.flatnonzero(lengths == length)
        order = np.array(_MESHIO_ORDERS.get(name, range(length)), np.int64)
        blocks.append(_CellBlock(name, dimension, rows, nodes[starts[rows][:, None] + order]))
    return blocks


def _checked_elements(
    node: Node, connectivity: Dataset, polylength: Dataset, node_count: int
) -> Tuple[Array, Array]:
    for dataset in (connectivity, polylength):
        if dataset.dtype != _DTYPES[5]:
            raise MeshError("%s: %r has no integers" % (_quoted(node.path), dataset))
    nodes = connectivity.read().astype(np.int64)
    lengths = polylength.read().astype(np.int64)
    if lengths.sum() != len(nodes):
        raise MeshError(
            "%s: its elements have %d nodes by their polylength, but %d by their connectivity"
            % (_quoted(node.path), lengths.sum(), len(nodes))
        )
    if len(nodes) and nodes.max() >= node_count:
        raise MeshError(
            "%s: its connectivity refers to node %d of %d, counted from 0"
            % (_quoted(node.path), nodes.max(), node_count)
        )
    return nodes, lengths


def _meshio_type(node: Node, dimension: int, length: int, element_type: str) -> str:
    if element_type:
        named = _MESHIO_NAMED_TYPES.get((element_type, length))
        name = named or _MESHIO_NAMED_TYPES.get((element_type, 0))
    else:
        name = _MESHIO_TYPES.get((dimension, length))
    if name is None or length == 0:
        kind = _quoted(element_type) + " " if element_type else ""
        raise MeshError(
            "%s: meshio has no type for elements %sof dimension %d with %d nodes"
            % (_quoted(node.path), kind, dimension, length)
        )
    return name


def _meshio_block(meshio: Any, block: _CellBlock) -> Any:
    try:
        return meshio.CellBlock(block.type, block.nodes)
    except KeyError:
        # Some versions know the type when they write it, but not its dimension.
        result = meshio.CellBlock(_KNOWN_TO_MESHIO[block.dimension], block.nodes)
        result.type = block.type
        return result
