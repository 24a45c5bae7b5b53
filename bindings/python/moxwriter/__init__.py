"""Reads model files, and writes them where the extension module is built.

Reading is pure Python: `open`, `File`, `Node`, `Dataset`, `to_meshio`; the module `reader` has it
all and stands alone. Writing, `Model`, is done by the library through an extension module.
"""

from __future__ import annotations

import importlib
from typing import Any

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
    open,
    to_meshio,
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
    "open",
    "to_meshio",
]


def __getattr__(name: str) -> Any:
    """The names of the writing half, which is loaded when the first of them is asked for."""
    if name.startswith("__"):
        raise AttributeError(name)
    try:
        writer = importlib.import_module("moxwriter._writer")
    except ImportError as reason:
        if name != "Model":
            raise AttributeError("module 'moxwriter' has no attribute %r" % name) from None
        raise ImportError(
            "moxwriter.Model needs the extension module, which is not there (%s): build it with "
            "CMake and pybind11 (pybind11-dev), or run pip install in the project's folder. "
            "Reading works without it." % reason
        ) from None
    return getattr(writer, name)
