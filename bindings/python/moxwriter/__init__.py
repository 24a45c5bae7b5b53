"""Reads model files, and writes them where the extension module is built.

Reading is pure Python: `open`, `File`, `Node`, `Dataset`, `to_meshio`; the module `reader` has it
all and stands alone. Writing, `Model`, is done by the library through an extension module; the
module `writer` has it all.
"""

from __future__ import annotations

import importlib
from typing import TYPE_CHECKING, Any

from .reader import (
    AmbiguousPathError,
    Dataset,
    Error,
    File,
    FileError,
    FormatError,
    IncompleteFileError,
    Material,
    MeshError,
    MissingKeyError,
    Node,
    OutOfMemoryError,
    Step,
    Transform,
    WritingRecord,
    open as open,
    to_meshio,
)

if TYPE_CHECKING:
    from .writer import (
        DatasetType as DatasetType,
        Encoder as Encoder,
        FileOpenException as FileOpenException,
        FileWriteException as FileWriteException,
        InvalidArguments as InvalidArguments,
        InvalidObjectState as InvalidObjectState,
        KeyNotFound as KeyNotFound,
        MemoryAllocationException as MemoryAllocationException,
        MiscelleneousException as MiscelleneousException,
        Model as Model,
        NodeType as NodeType,
        NotYetImplemented as NotYetImplemented,
        OutOfBounds as OutOfBounds,
        OverflowError as OverflowError,
        PropertyType as PropertyType,
        TemplateSpecializationNotDefined as TemplateSpecializationNotDefined,
        UnderflowError as UnderflowError,
        UnfinishedModelWarning as UnfinishedModelWarning,
        WritingError as WritingError,
        version as version,
    )

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


#: Not in `__all__`, so that `import *` works without the extension module.
_WRITING = frozenset(
    [
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
)


def __getattr__(name: str) -> Any:
    """The names of the writing half, which is loaded when the first of them is asked for."""
    if name not in _WRITING:
        raise AttributeError("module 'moxwriter' has no attribute %r" % name)
    try:
        writer = importlib.import_module("moxwriter.writer")
    except ImportError as reason:
        raise ImportError(
            "moxwriter.%s needs the extension module, which is not there (%s): build it with "
            "CMake and pybind11 (pybind11-dev), or run pip install in the project's folder. "
            "Reading works without it." % (name, reason)
        ) from None
    return getattr(writer, name)
