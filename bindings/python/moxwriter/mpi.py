"""Writes models whose pieces the ranks of an MPI program hold, with communicators of mpi4py.

    from mpi4py import MPI
    from moxwriter import DatasetType, NodeType
    from moxwriter.mpi import PartitionedModel

    with PartitionedModel(MPI.COMM_WORLD, "wave.moxs") as model:
        model.add_node(NodeType.RootGroup, "Wave")
        body = model.add_node(NodeType.Shape, "Body")
        ...
        for number in range(steps):
            model.add_array_property(DatasetType.Displacement, values, body, "Step %d" % number)
            model.step()

Collective calls are made by all ranks of the communicator, in the same order: making the model,
`step`, `checkpoint` and `close`, with which a `with` block ends. What fails on one rank, in the model
or in the block, fails on all others with their next collective call, by an exception of the same
kind whose text begins with that rank: "Rank 3: Invalid arguments: ...". That is the end of the model,
whose files stay incomplete; `close` ends quietly then.
"""

from __future__ import annotations

import functools
import operator
import os
from types import TracebackType
from typing import Any, Callable, Optional, SupportsIndex, Type, TypeVar, cast

try:
    from . import _mpi
except ImportError as reason:
    raise ImportError(
        "moxwriter.mpi needs an extension module, which is not there (%s): build it with CMake, "
        "pybind11 (pybind11-dev) and MPI (libopenmpi-dev)." % reason
    ) from None

from .reader import Error, PathLike
from .writer import Encoder, InvalidObjectState, Model, Text, WritingError, _options, _path, _size

__all__ = ["PartitionedModel"]

_Call = TypeVar("_Call", bound=Callable[..., Any])


def _telling(call: _Call) -> _Call:
    """Lets the other ranks know of what is refused here, even before the library sees it."""

    @functools.wraps(call)
    def told(self: PartitionedModel, *args: Any, **kwargs: Any) -> Any:
        try:
            return call(self, *args, **kwargs)
        except InvalidObjectState:
            # Another thread is writing, or the model is closed.
            raise
        except BaseException as error:
            self._tell(error)
            raise

    return cast(_Call, told)


class PartitionedModel(Model):
    """The piece of one rank: a `Model` that has its files from the beginning, and `step`."""

    _model: _mpi.PartitionedModel

    def __init__(
        self,
        comm: Any,
        path: PathLike,
        *,
        ranks_per_file: SupportsIndex = 0,
        message_bytes: SupportsIndex = 0,
        overwrite: bool = False,
        text1: Text = "",
        text2: Text = "",
        text3: Text = "",
        encoder: SupportsIndex = Encoder.Default,
        threads: Optional[SupportsIndex] = None,
        block_size: Optional[SupportsIndex] = None,
        recoverable: Optional[bool] = None,
    ) -> None:
        """Creates the files, and an index that says that they are not complete. Collective.

        Args:
            comm: a communicator of mpi4py, whose ranks the pieces are of; a copy of it is used.
            path: of the index, which ends with ".moxs"; the same on all ranks. The files are beside it.
            ranks_per_file: how many ranks, one after the other, share a file; 0 for those of one machine.
            message_bytes: the most bytes that a rank sends at a time, 4096 to 1073741824; 0 for 1048576.
            overwrite: whether the index and the files are overwritten; this and all that follow are as
                for `Model.save_to`.

        Raises:
            InvalidArguments: an argument is not what it has to be, or not the same on all ranks.
            WritingError: what `Model.save_to` raises for one of the files; those that this call has
                created are removed again.
        """
        self._is_open = False
        self._name = "model"
        number = comm.py2f()
        try:
            raw = _path(path)
            ranks = operator.index(ranks_per_file)
            if not -(1 << 31) <= ranks < 1 << 31:
                raise ValueError("%d is no number of ranks" % ranks)
            message = _size(message_bytes)
            options = _options(
                overwrite, text1, text2, text3, encoder, threads, block_size, recoverable
            )
        except BaseException:
            _mpi.fail_to_open(number)
            raise
        self._model = _mpi.PartitionedModel(number, raw, ranks, message, options)
        self._is_open = True
        self._name = os.fsdecode(raw)

    add_node = _telling(Model.add_node)
    set_node_data = _telling(Model.set_node_data)
    add_assembly_components = _telling(Model.add_assembly_components)
    add_array_property = _telling(Model.add_array_property)

    def step(self) -> None:
        """Takes what was added since the last collective call to the files. Collective.

        To be called after each step of the program, or more often, since a rank that doesn't write
        keeps what it adds until then.

        Raises:
            WritingError: what a rank failed at.
        """
        self._model.step()

    def fail(self, sentence: str) -> None:
        """Lets the next collective call fail on all ranks, for a program that can't go on.

        It closes the model next. Unlike the collective calls, this one does not wait for other ranks.
        An exception that leaves a `with` block does so by itself.

        Args:
            sentence: what was wrong, of which at most 1023 bytes are told.
        """
        self._model.fail(sentence.encode("utf-8", "surrogateescape"), WritingError.code)

    def _tell(self, error: BaseException) -> None:
        if isinstance(error, WritingError):
            self._model.fail(str(error).encode("utf-8", "surrogateescape"), error.code)
        else:
            self.fail("%s: %s" % (type(error).__name__, error))

    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        error: Optional[BaseException],
        trace: Optional[TracebackType],
    ) -> None:
        if error is not None and not self.closed:
            self._tell(error)
            try:
                self.close()
            except Error:
                # All ranks are told, this one by the exception that is on its way.
                self._is_open = False
            return
        self.close()
