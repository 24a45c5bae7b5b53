"""The extension module for many ranks, with values as `moxwriter.mpi` prepares them."""

from ._writer import Model, _Options

def fail_to_open(comm: int) -> None:
    """Lets the ranks know that make a model at the same time."""

class PartitionedModel(Model):
    def __init__(
        self, comm: int, path: bytes, ranks_per_file: int, message_bytes: int, options: _Options
    ) -> None: ...
    def step(self) -> None: ...
    def fail(self, sentence: bytes, code: int) -> None: ...
