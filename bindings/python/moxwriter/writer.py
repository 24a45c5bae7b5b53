"""Writes model files: the library's facade `Zyl2::Mox2::Model`, in Python.

    import numpy as np
    import moxwriter
    from moxwriter import DatasetType, NodeType

    with moxwriter.Model("beam.mox") as model:
        model.add_node(NodeType.RootGroup, "Beam")
        steel = model.add_node(NodeType.Shape, "Steel")
        model.add_array_property(DatasetType.Coordinates, np.array([[0.0, 0, 0], [1, 0, 0]]), steel)
        model.add_array_property(
            DatasetType.Displacement,
            np.array([[0.0, 0, 0], [0, 0, -0.1]]),
            steel,
            ("Load 1", {"Time": 1.0}),
        )

Names, paths and texts are `str`, stored as UTF-8, or `bytes`, stored as they are.
"""

from __future__ import annotations

import builtins
import enum
import operator
import os
import warnings
from types import TracebackType
from typing import (
    Any,
    Dict,
    List,
    Mapping,
    Optional,
    Sequence,
    SupportsFloat,
    SupportsIndex,
    Tuple,
    Type,
    Union,
)

import numpy as np

from . import _writer
from .reader import Error, PathLike

__all__ = [
    "DatasetType",
    "Encoder",
    "FileOpenException",
    "FileWriteException",
    "InvalidArguments",
    "InvalidObjectState",
    "KeyNotFound",
    "MemoryAllocationException",
    "MiscelleneousException",
    "Model",
    "NodeType",
    "NotYetImplemented",
    "OutOfBounds",
    "OverflowError",
    "PropertyType",
    "TemplateSpecializationNotDefined",
    "UnderflowError",
    "UnfinishedModelWarning",
    "WritingError",
    "version",
]

Text = Union[str, bytes]
#: An integer of up to 64 bits, of which the low 32 are stored; a float, stored as the nearest of 32
#: bits; a text, of which the first 256 bytes are stored, up to the first zero byte. Those of
#: NumPy are as good as Python's own.
AttributeValue = Union[int, float, str, bytes, "np.integer[Any]", "np.floating[Any]"]
#: Attributes by their names, each a `Text`. (The type of a mapping's keys is invariant: one of `str` would
#: not do for one of `Text`.)
Attributes = Mapping[Any, AttributeValue]
#: The name of a step, or its name and its attributes.
Step = Union[Text, Tuple[Text, Attributes]]
#: What a property takes, see `PropertyType`.
PropertyValue = Union[SupportsFloat, Text, Sequence[SupportsFloat], "np.ndarray[Any, Any]"]

_NO_ATTRIBUTES: Attributes = {}


def version() -> str:
    """The version of the library that writes, such as "1.2.3"."""
    return _writer.version()


# ------------------------------------------------------------------------------------ enumerators


class NodeType(enum.IntEnum):
    """What `Model.add_node` adds."""

    #: A group whose flag byte is 1; for the first node (the root) only.
    FlaggedRootGroup = 1
    #: A group; for the first node (the root) only.
    RootGroup = 2
    #: A named node with a transform and attributes.
    Group = 3
    #: A visible part with a material. Arrays are added to the id that `Model.add_node` returns.
    Shape = 4


class Encoder(enum.IntEnum):
    """What compresses the blocks of a file; any reader inflates what it makes.

    The library holds those that were found when it was built.
    """

    #: What the environment variable MOXWRITER_ENCODER names ("zlib", "libdeflate" or "isal"); `Zlib`
    #: where it is not set, or empty.
    Default = 0
    #: zlib at level 6. It is always there.
    Zlib = 1
    #: libdeflate: faster, and files as small as zlib's.
    Libdeflate = 2
    #: ISA-L: the fastest. Files are somewhat larger, and the same calls may express a block in another
    #: way the next time.
    Isal = 3


class PropertyType(enum.IntEnum):
    """What `Model.set_node_data` sets. Of one call, the properties are set in this order."""

    #: Group: 3 floats x, y, z.
    Translation = 0
    #: Group: 4 floats, the axis x, y, z and the angle in radians.
    Rotation = 1
    #: Group: 3 floats, factors along x, y, z.
    Scale = 2
    #: Shape: 3 or 4 floats red, green, blue in 0..1; a fourth value is ignored.
    DiffuseColor = 3
    #: Shape: 3 or 4 floats red, green, blue in 0..1; a fourth value is ignored.
    SpecularColor = 4
    #: Shape: 3 floats red, green, blue in 0..1.
    EmissiveColor = 5
    #: Shape: 3 floats red, green, blue in 0..1.
    AmbientColor = 6
    #: Shape: one float, 0 (opaque) to 1.
    Transparency = 7
    #: Shape: one float; the ambient colour becomes this times the diffuse colour.
    AmbientIntensity = 8
    #: Shape: one float, 0 to 1.
    Shininess = 9
    #: Setting it always fails.
    Unsupported = 10


class DatasetType(enum.IntEnum):
    """What an array holds. It fixes the number of columns; a default name, where there is one."""

    #: "Connectivity", 1 column: rows of the coordinates, for elements of one dimension.
    Connectivity1 = 0
    #: "Connectivity", 1 column, for elements of two dimensions.
    Connectivity2 = 1
    #: "Connectivity", 1 column, for elements of three dimensions.
    Connectivity3 = 2
    #: "Polylength", 1 column: nodes per element, for elements of one dimension.
    Polylength1 = 3
    #: "Polylength", 1 column, for elements of two dimensions.
    Polylength2 = 4
    #: "Polylength", 1 column, for elements of three dimensions.
    Polylength3 = 5
    #: "Part Elements", 1 column, for elements of one dimension.
    PartElements1 = 6
    #: "Part Elements", 1 column, for elements of two dimensions.
    PartElements2 = 7
    #: "Part Elements", 1 column, for elements of three dimensions.
    PartElements3 = 8
    #: "Coordinates", 3 columns.
    Coordinates = 9
    #: No default name, 1 column.
    Result10 = 10
    #: No default name, 3 columns.
    Result11 = 11
    #: No default name, 6 columns.
    Result12 = 12
    #: No default name, 6 columns.
    Result13 = 13
    #: No default name, 1 column.
    Result14 = 14
    #: No default name, 3 columns.
    Result15 = 15
    #: No default name, 6 columns.
    Result16 = 16
    #: No default name, 6 columns.
    Result17 = 17
    #: No default name, 1 column.
    Result18 = 18
    #: No default name, 3 columns.
    Result19 = 19
    #: No default name, 6 columns.
    Result20 = 20
    #: No default name, 6 columns.
    Result21 = 21
    #: No default name, 1 column.
    Result22 = 22
    #: No default name, 1 column.
    Result23 = 23
    #: No default name, 3 columns.
    Result24 = 24
    #: No default name, 6 columns.
    Result25 = 25
    #: No default name, 6 columns.
    Result26 = 26
    #: "Node Ids", 1 column; laid out as `Result10`.
    NodeIds = 27
    #: "Element IDs", 1 column; laid out as `Result14`.
    ElementIds = 28
    #: "Displacement", 3 columns; laid out as `Result11`.
    Displacement = 29
    #: "Displacement", 6 columns; laid out as `Result12`.
    Displacement6 = 30

    #: On nodes, 1 column, such as a temperature. No default name, as with
    #: all that follow.
    NodeScalar = Result10
    #: On nodes, 3 columns: x, y, z, such as a velocity.
    NodeVector = Result11
    #: On nodes, 6 columns: translations along x, y, z, then rotations about them.
    NodeVector6 = Result12
    #: On nodes, 6 columns: a symmetric tensor, xx, yy, zz, xy, yz, zx, such as a stress.
    NodeTensor = Result13
    #: On elements, 1 column, such as a damage.
    ElementScalar = Result14
    #: On elements, 3 columns: x, y, z.
    ElementVector = Result15
    #: On elements, 6 columns: a symmetric tensor, xx, yy, zz, xy, yz, zx, such as a stress.
    ElementTensor = Result17


# --------------------------------------------------------------------------------------- failures


class UnfinishedModelWarning(UserWarning):
    """A `with` block was left by an exception: what came after it is not in the file."""


class WritingError(Error):
    """What the library refuses, or fails in: `text` says which kind of failure, `detail` what was wrong.

    The kinds, their texts and what each of them leaves are those of docs/errors.md.
    """

    #: The number of the kind.
    code = 1

    def __init__(self, text: str = "", detail: str = "") -> None:
        super().__init__(_sentence(text, detail))
        self._text = text
        self.detail = detail

    @property
    def text(self) -> str:
        return self._text


def _sentence(text: str, detail: str) -> str:
    if not detail:
        return text
    # Some texts are sentences of their own.
    return text + (" " if text.endswith(".") else ": ") + detail


class MiscelleneousException(WritingError, OSError):
    """A file that can't be opened."""

    code = 2


class InvalidArguments(WritingError, ValueError):
    """A value that the call can't use."""

    code = 3


class FileOpenException(WritingError, FileExistsError):
    """The file is there, and overwriting was not asked for."""

    code = 5


class FileWriteException(WritingError, OSError):
    """Bytes did not reach the file, on a full disk for instance: it is incomplete."""

    code = 7


class OutOfBounds(WritingError, IndexError):
    """An id of 0, or past the last node's; a path that names the root only."""

    code = 11


class OverflowError(WritingError, builtins.OverflowError):
    """More rows, ids or bytes than the format can count, or a value that is out of its range."""

    code = 12


class UnderflowError(WritingError, ArithmeticError):
    """A negative count."""

    code = 13


class KeyNotFound(WritingError, KeyError):
    """An id that no node has."""

    code = 14


class MemoryAllocationException(WritingError, MemoryError):
    """Memory ran out: a block can't grow, or can't be compressed."""

    code = 16


class InvalidObjectState(WritingError, RuntimeError):
    """A call out of order: adding before saving, or to a closed model."""

    code = 17


class TemplateSpecializationNotDefined(WritingError, TypeError):
    """A property's value of another type than the property takes."""

    code = 19


class NotYetImplemented(WritingError, NotImplementedError):
    """A path from another root, or a block after one that could not be saved."""

    code = 20


_KINDS: Dict[int, Type[WritingError]] = {kind.code: kind for kind in WritingError.__subclasses__()}


def failure(code: int, text: bytes, detail: bytes) -> WritingError:
    """The exception for a failure of the library; for the extension module."""
    return _KINDS.get(code, WritingError)(_str(text), _str(detail))


# ------------------------------------------------------------------- values, as the module takes them


def _str(raw: bytes) -> str:
    return raw.decode("utf-8", "surrogateescape")


def _bytes(text: Text) -> bytes:
    if isinstance(text, bytes):
        return text
    if not isinstance(text, str):
        raise TypeError("a name, path or text is str or bytes, not %s" % type(text).__name__)
    try:
        # As the reader gives them, bytes that are no UTF-8 are single surrogates.
        return text.encode("utf-8", "surrogateescape")
    except UnicodeEncodeError as reason:
        raise _invalid("%a is no text: %s" % (text, reason.reason)) from None


def _path(path: PathLike) -> bytes:
    raw = os.fsencode(path)
    if b"\0" in raw:
        raise _invalid("the path %a has a zero byte" % path)
    return raw


def _invalid(detail: str) -> InvalidArguments:
    return InvalidArguments("Invalid arguments", detail)


def _typed(value: object) -> str:
    return "%r of the type %s" % (value, type(value).__name__)


def _enumerator(value: SupportsIndex) -> int:
    """Any integer of 32 bits: which of them are enumerators is for the library to say."""
    try:
        number = operator.index(value)
    except TypeError:
        raise TypeError(
            "an enumerator such as NodeType.Shape is wanted, not %s" % _typed(value)
        ) from None
    if not -(1 << 31) <= number < 1 << 32:
        raise _invalid("%d is no enumerator" % number)
    return number


def _unsigned(value: SupportsIndex) -> int:
    return _enumerator(value) & 0xFFFFFFFF


def _signed(value: SupportsIndex) -> int:
    return _low_32_bits(_enumerator(value))


def _size(value: SupportsIndex) -> int:
    """Any number of bytes that has 64 bits: which of them can be is for the library to say."""
    number = operator.index(value)
    if not 0 <= number < 1 << 64:
        raise _invalid("%d is no size of blocks" % number)
    return number


def _options(
    overwrite: bool,
    text1: Text,
    text2: Text,
    text3: Text,
    encoder: SupportsIndex,
    threads: Optional[SupportsIndex],
    block_size: Optional[SupportsIndex],
    recoverable: Optional[bool],
) -> Tuple[bool, bytes, bytes, bytes, int, int, int, int]:
    return (
        bool(overwrite),
        _bytes(text1),
        _bytes(text2),
        _bytes(text3),
        _signed(encoder),
        -1 if threads is None else _signed(threads),
        0 if block_size is None else _size(block_size),
        -1 if recoverable is None else int(bool(recoverable)),
    )


def _low_32_bits(value: int) -> int:
    return (value + (1 << 31) & 0xFFFFFFFF) - (1 << 31)


def _id(value: SupportsIndex) -> int:
    try:
        number = operator.index(value)
    except TypeError:
        raise TypeError("an id is an integer, not %s" % _typed(value)) from None
    if not 0 <= number < 1 << 32:
        raise OutOfBounds("Out of bounds error", "no node has the id %d" % number)
    return number


def _ids(values: Union[SupportsIndex, Sequence[SupportsIndex], np.ndarray[Any, Any]]) -> List[int]:
    try:
        return [_id(values)]  # type: ignore[arg-type]
    except TypeError:
        return [_id(value) for value in values]  # type: ignore[union-attr]


def _attribute(name: Text, value: AttributeValue) -> Union[bytes, bool, int, float]:
    if isinstance(value, (str, bytes)):
        return _bytes(value)
    if isinstance(value, (bool, np.bool_)):
        return bool(value)
    if isinstance(value, (float, np.floating)):
        return float(value)
    if isinstance(value, (int, np.integer)):
        number = int(value)
        if -(1 << 63) <= number < 1 << 64:
            return _low_32_bits(number)
        raise OverflowError(
            "Overflow error", 'attribute "%s": %d has more than 64 bits' % (_shown(name), number)
        )
    raise _invalid(
        'attribute "%s" is of the type %s, which can\'t be stored'
        % (_shown(name), type(value).__name__)
    )


def _shown(name: Text) -> str:
    return name if isinstance(name, str) else _str(name)


def _attributes(values: Attributes) -> List[Tuple[bytes, Union[bytes, bool, int, float]]]:
    return [(_bytes(name), _attribute(name, value)) for name, value in values.items()]


def _property(kind: int, value: PropertyValue) -> Union[bytes, bool, int, float, List[Any]]:
    """Python's own numbers are taken as the property needs them, those of NumPy as they are."""
    if isinstance(value, (str, bytes)):
        return _bytes(value)
    if isinstance(value, np.ndarray):
        return _property_numbers(kind, value)
    if isinstance(value, (bool, np.bool_)):
        return bool(value)
    if isinstance(value, np.integer) or (isinstance(value, int) and not _takes_floats(kind)):
        return _signed(value)
    if isinstance(value, Sequence):
        return [float(number) for number in value]
    return float(value)


def _takes_floats(kind: int) -> bool:
    return kind < PropertyType.Unsupported


def _property_numbers(kind: int, values: np.ndarray[Any, Any]) -> List[Any]:
    if values.ndim != 1 or values.dtype.kind not in "iuf":
        name = PropertyType(kind).name if kind <= PropertyType.Unsupported else str(kind)
        raise _invalid(
            "property %s is an array of shape %s of %s, which is no list of numbers"
            % (name, values.shape, values.dtype)
        )
    numbers: List[Any] = values.tolist()
    return numbers if values.dtype.kind == "f" else [_signed(number) for number in numbers]


def _steps(steps: Union[None, Step, List[Any]]) -> List[Tuple[bytes, List[Any]]]:
    if steps is None:
        return [(b"", [])]
    return [_step(step) for step in steps] if isinstance(steps, list) else [_step(steps)]


def _step(step: Step) -> Tuple[bytes, List[Any]]:
    if isinstance(step, (str, bytes)):
        return _bytes(step), []
    if isinstance(step, tuple) and len(step) == 2 and isinstance(step[1], Mapping):
        return _bytes(step[0]), _attributes(step[1])
    raise TypeError("a step is its name, or a tuple of its name and a mapping of its attributes")


def _check_not_masked(values: object) -> None:
    """The buffer of a masked array has what the mask hides."""
    if isinstance(values, np.ma.MaskedArray) and np.any(values.mask):
        raise _invalid("the array masks some of its values: fill them, or leave them out")


# ----------------------------------------------------------------------------------------- the model


class Model:
    """Writes one result model into one file.

    The life of a model, in order:

    1. `Model(path)` creates the file at once. (`Model()` has none; `save_to` gives it one.)
    2. `add_node` and `add_assembly_components` build the tree. The first node becomes the root and has
       the id 1; every further node goes below the *current* node, which is then the new one.
       `set_current_node_id`, `move_to_parent_node` and `get_node_id` move the cursor.
    3. `set_node_data` sets transforms and attributes of groups, and materials of shapes.
    4. `add_array_property` adds arrays to shapes. Their values go from the array's memory into the
       file's block, without a copy of the array; full blocks go to the file.
    5. `close`, or the end of the `with` block, writes what is pending and finishes the file.

    A `with` block that is left by an exception closes the model all the same: the file is sound, but what
    came later is not in it, and an `UnfinishedModelWarning` says so. A model that is neither closed nor
    used in a `with` block is closed when nobody refers to it any more, with a `ResourceWarning`; a failure
    is then only printed.

    Failures are of the family `WritingError`; work already done when a later step of a call fails is not
    undone. Arguments of a wrong type altogether raise `TypeError`, as everywhere in Python.

    Different models may be written by different threads at the same time. Other threads of Python run while
    values are written and files are closed; those that call the same model meanwhile get an
    `InvalidObjectState`.
    """

    #: No node has this id, and no call returns it: the id for "none" is 0.
    INVALID_ID = 4294967295

    def __init__(
        self,
        path: Optional[PathLike] = None,
        *,
        overwrite: bool = False,
        text1: Text = "",
        text2: Text = "",
        text3: Text = "",
        encoder: SupportsIndex = Encoder.Default,
        threads: Optional[SupportsIndex] = None,
        block_size: Optional[SupportsIndex] = None,
        recoverable: Optional[bool] = None,
    ) -> None:
        """Creates the file, as `save_to` does; without a path there is none yet."""
        self._is_open = False
        self._name = "model"
        self._model = _writer.Model()
        if path is not None:
            self.save_to(
                path,
                overwrite=overwrite,
                text1=text1,
                text2=text2,
                text3=text3,
                encoder=encoder,
                threads=threads,
                block_size=block_size,
                recoverable=recoverable,
            )

    def save_to(
        self,
        path: PathLike,
        *,
        overwrite: bool = False,
        text1: Text = "",
        text2: Text = "",
        text3: Text = "",
        encoder: SupportsIndex = Encoder.Default,
        threads: Optional[SupportsIndex] = None,
        block_size: Optional[SupportsIndex] = None,
        recoverable: Optional[bool] = None,
    ) -> None:
        """Creates the file and makes the model ready for adding.

        Args:
            path: of the file. With an empty one nothing is written.
            overwrite: when false, an existing file is an error.
            text1: first text of the file's writing record, the host's name and version for instance.
            text2: second text of the writing record; used only when the first is not empty.
            text3: carried along, and written nowhere.
            encoder: an `Encoder`: what compresses the file. Left alone, whoever runs the program chooses.
            threads: how many threads of its own the model may start to compress full blocks while the
                program goes on, 0 to 1024. `None` or a negative number stands for what the environment
                variable MOXWRITER_THREADS says, and for 0 where that is not set. The bytes of the file
                do not depend on it.
            block_size: bytes from which on a block of the file is full, 1 to 4294967294. `None` or 0
                stands for what the environment variable MOXWRITER_DEFAULT_BLOCK_SIZE says, and for
                209715200 (200 MiB) where that is not set.
            recoverable: whether what was added survives the process, for `mox recover`. `None` stands
                for what the environment variable MOXWRITER_RECOVERABLE says, and for no where that is
                not set.

        Raises:
            InvalidObjectState: "Not Empty": the model was saved and not closed since.
            InvalidArguments: the encoder is not there, and the detail says which ones are; a number of
                threads or a size of blocks that is out of its range.
            FileOpenException: "File exists.", and `overwrite` is false.
            MiscelleneousException: "Unable to open file ...": the system refuses.

        After a failure of the file the model must be closed before it can be saved again.
        """
        raw = _path(path)
        self._model.save_to(
            raw,
            _options(overwrite, text1, text2, text3, encoder, threads, block_size, recoverable),
        )
        self._is_open = True
        self._name = os.fsdecode(raw) or "model"

    def add_node(
        self, type: SupportsIndex, name: Text, attributes: Attributes = _NO_ATTRIBUTES
    ) -> int:
        """Adds a node below the current node and makes it current; the first node becomes the root.

        Nodes that are to be siblings make their group current first: `set_current_node_id`.

        Args:
            type: a `NodeType`; `RootGroup` and `FlaggedRootGroup` for the root only.
            name: any text.
            attributes: stored on a group; shapes have none, theirs are dropped.

        Returns:
            The id of the node; for a shape below the root, the id of its geometry, which is what
            `set_node_data` and `add_array_property` want.

        Raises:
            InvalidObjectState: "File not open."
            InvalidArguments: "Invalid node type for root node", "Invalid node type"; default text for
                an attribute of a type that can't be stored.
            KeyNotFound: the current node is none, after data was given for an unknown id.
        """
        return self._model.add_node(_signed(type), _bytes(name), _attributes(attributes))

    def set_node_data(
        self,
        id: SupportsIndex,
        properties: Mapping[PropertyType, PropertyValue],
        attributes: Attributes = _NO_ATTRIBUTES,
    ) -> None:
        """Sets properties of a node and merges attributes into it. The node becomes current.

        Args:
            id: of a group, a shape, or what `add_node` returned for a shape.
            properties: set in ascending order of `PropertyType`. Numbers of Python become floats where
                the property takes floats; integers of NumPy, and arrays of them, do not, and are
                refused there.
            attributes: merged into a group's own; for shapes they are dropped.

        Raises:
            InvalidObjectState: "File not open."
            OutOfBounds: `id` is 0 or past the last node.
            InvalidArguments: "empty node": the node is not of the kind that the property applies to;
                "invalid array size"; "Invalid properties"; default text for an attribute of a type that
                can't be stored.
            TemplateSpecializationNotDefined: a value of another type than the property takes.
        """
        values = [
            (_unsigned(kind), _property(_unsigned(kind), value))
            for kind, value in properties.items()
        ]
        self._model.set_node_data(_id(id), values, _attributes(attributes))

    def get_node_id(self, path: Union[Text, Sequence[Text]], separator: Text = "/") -> int:
        """Finds a node by the names from the root down to it. The root becomes current.

        Args:
            path: separator, name of the root, separator, name below it, and so on; or a sequence of
                these names, which may then contain the separator, but not the byte 1E. The root's name
                alone is not resolved.
            separator: what stands between the names of a path.

        Returns:
            The id of the first such node in the order of adding; 0 when there is none or `path` is empty.

        Raises:
            InvalidObjectState: "Not initialized"
            OutOfBounds: the path names the root only.
        """
        if isinstance(path, (str, bytes)):
            return self._model.get_node_id(_bytes(path), _bytes(separator))
        return self._model.get_node_id_of_names([_bytes(name) for name in path])

    def set_current_node_id(self, id: SupportsIndex) -> None:
        """Makes a node current.

        Raises:
            InvalidObjectState: "Not initialized"
            OutOfBounds: `id` is 0 or past the last node.
        """
        self._model.set_current_node_id(_id(id))

    def move_to_parent_node(self) -> int:
        """Makes the current node's parent current; at the root the root stays current.

        After a shape was added, the first call leads from its geometry to the shape, the second to the
        group that holds it.

        Returns:
            The parent's id; 0 at the root.

        Raises:
            InvalidObjectState: "Not initialized"
            KeyNotFound: the current node is none.
        """
        return self._model.move_to_parent_node()

    def add_assembly_components(
        self, paths: Union[Sequence[Text], Mapping[Any, Attributes]], separator: Text = "/"
    ) -> List[int]:
        """Adds the nodes that absolute paths such as /car/body/door name, reusing what exists.

        All names of a path are groups, but for the last: it is a shape, or a group when the path ends
        with `separator`. The first name is the root's. Empty paths are skipped.

        Args:
            paths: the paths; or a mapping of them to attributes, which are checked where the path names
                a group, and stored nowhere.
            separator: each of its characters separates names.

        Returns:
            One id for each path, of a group or of a shape's geometry; 1 for the root, 0 for a skipped
            path. In the order of `paths`; for a mapping in ascending order of the paths.

        Raises:
            InvalidObjectState: "File not open.", unless there are no paths.
            InvalidArguments: "Relative paths not supported"; earlier paths stay added. Default text for
                an attribute of a type that can't be stored.
            NotYetImplemented: a first name that is not the root's.
        """
        if isinstance(paths, (str, bytes)):
            raise TypeError("paths are a list of paths, even where it is one")
        if isinstance(paths, Mapping):
            entries = [(_bytes(path), _attributes(values)) for path, values in paths.items()]
            return self._model.add_components_with_attributes(entries, _bytes(separator))
        return self._model.add_components([_bytes(path) for path in paths], _bytes(separator))

    def add_array_property(
        self,
        type: SupportsIndex,
        values: object,
        components: Union[SupportsIndex, Sequence[SupportsIndex], np.ndarray[Any, Any]],
        steps: Union[None, Step, List[Any]] = None,
        attributes: Attributes = _NO_ATTRIBUTES,
        *,
        name: Optional[Text] = None,
    ) -> None:
        """Adds an array. Its values are written once; every pair of a component and a step refers to them.

        An array without rows, or no components, adds nothing.

        Args:
            type: a `DatasetType`; fixes the number of columns.
            values: an array of NumPy, or whatever else has a buffer: rows, or rows x columns, of any
                strides and either storage order, of float32 or float64, stored as floats rounded to the
                nearest, or of int32, uint32, int64 or uint64, stored as unsigned integers of 32 bits.
                It is not copied, and must not be changed by other threads meanwhile.
            components: the id, or the ids, of the shapes that get the array; an id that is not a shape's
                is passed over.
            steps: the step that the values belong to, as its name or as a tuple of its name and its
                attributes; a list of such steps; `None` for what belongs to no step, such as the mesh.
            attributes: of the dataset; where a step has one of the same name, the dataset's holds.
            name: of the dataset; `None` for the default name of the type. With a step's name it must be
                unique on a node: a later array of the same name takes the earlier one's place.

        Raises:
            InvalidObjectState: "File not open."
            InvalidArguments: "Can't guess result name for specified type": give a name; "Can't guess
                result width for specified type"; default text when the columns do not match the type,
                when the array is none of these, or for an attribute of a type that can't be stored.
            OverflowError: a value that is out of range, whose row and column, counted from 0, are in the
                detail, before anything is written; more than 2147483647 rows or components, or more than
                4294967295 bytes.
            OutOfBounds: an id that is no integer of 32 bits without sign.
            KeyNotFound: an id that no node has; the current node is then none.
            FileWriteException: "Unable to write to file", "Saving the buffer failed".
            MemoryAllocationException: a block can't grow.
        """
        _check_not_masked(values)
        self._model.add_array_property(
            None if name is None else _bytes(name),
            _unsigned(type),
            values,
            _ids(components),
            _steps(steps),
            _attributes(attributes),
        )

    def close(self) -> None:
        """Writes what is pending and finishes the file. Closing a closed model does nothing.

        The model may be saved anew, to another file.

        Raises:
            FileWriteException: the file is incomplete, because the disk is full for instance; or somebody
                removed or replaced it meanwhile.
            MemoryAllocationException: a block can't be compressed.

        After a failure the file is closed; a second call ends quietly.
        """
        try:
            self._model.close()
        except InvalidObjectState:
            # Another thread is writing: the model is still open.
            raise
        except BaseException:
            self._is_open = False
            raise
        self._is_open = False

    def checkpoint(self) -> bool:
        """Waits until all that was added so far is on the disk.

        `mox recover` then gives it back after a loss of power, too. The model is as it was.

        Returns:
            Whether it is; false, without waiting, for a model that can't be recovered or has no file.

        Raises:
            InvalidObjectState: "File not open.", or another thread is writing.
            FileWriteException: it is not on the disk.
        """
        return self._model.checkpoint()

    @property
    def waited_seconds(self) -> float:
        """How long calls of this model have waited for its threads since `save_to`, in seconds.

        `close` is included once it has returned; 0 without threads. A program that waits for much of its
        time gains by another thread, a faster encoder or smaller blocks.

        Raises:
            InvalidObjectState: another thread is writing.
        """
        return self._model.waited_seconds()

    @property
    def closed(self) -> bool:
        """Whether there is no file to add to: none was saved to, or it was closed."""
        return not self._is_open

    def __enter__(self) -> Model:
        return self

    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        error: Optional[BaseException],
        trace: Optional[TracebackType],
    ) -> None:
        if error is None or self.closed:
            self.close()
            return
        try:
            self.close()
            end = "closed"
        except Error as reason:
            end = "given up (%s)" % reason
        warnings.warn(
            "%s was %s because of an exception: it may lack steps" % (self._name, end),
            UnfinishedModelWarning,
            stacklevel=2,
        )

    def __del__(self) -> None:
        if getattr(self, "_is_open", False):
            warnings.warn("%s was not closed" % self._name, ResourceWarning, source=self)
            self.close()

    def __repr__(self) -> str:
        return "<moxwriter.Model %r, %s>" % (self._name, "closed" if self.closed else "open")
