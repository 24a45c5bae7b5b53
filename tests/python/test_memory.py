"""A file that states or inflates to much more than it has does not take memory without end."""

from __future__ import annotations

import functools
import os
import struct
import subprocess
import sys
import zlib
from pathlib import Path
from typing import Tuple

import build
import numpy as np
import pytest

_PACKAGE = Path(__file__).resolve().parents[2] / "bindings" / "python"
_MEBIBYTE = 1 << 20
_CHILD = """
import resource, sys
import moxwriter
before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
try:
    with moxwriter.open(sys.argv[1], cache_bytes=int(sys.argv[2])) as file:
        for node in file.values():
            for values in node.values():
                del values
    said = "read"
except moxwriter.Error as error:
    said = type(error).__name__
print(said, resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before)
"""


def _growth(path: Path, cache_bytes: int) -> Tuple[str, int]:
    """What reading everything says, and by how many bytes the process grows."""
    command = [sys.executable, "-B", "-c", _CHILD, str(path), str(cache_bytes)]
    answer = subprocess.run(
        command, env={"PYTHONPATH": str(_PACKAGE)}, check=True, capture_output=True
    )
    said, kibibytes = answer.stdout.split()
    return said.decode(), int(kibibytes) * 1024


@functools.lru_cache()
def _zeros(count: int) -> bytes:
    """Compressed zeros, a thousandth of their size."""
    packer = zlib.compressobj()
    pieces = [packer.compress(bytes(_MEBIBYTE)) for _ in range(count // _MEBIBYTE)]
    return b"".join(pieces) + packer.flush()


def _file(model: build.Builder, key: bytes, length: int, stream: bytes) -> bytes:
    """The block of one key replaced by a stream that states a length."""
    blocks = [build.block(*item) for item in model.streams().items() if item[0] != key]
    return build.container(blocks + [(key, struct.pack("<I", length) + stream, 1)])


def _small_model() -> build.Builder:
    model = build.Builder()
    model.dataset(model.shape("S"), "D", 12, [1, 2, 3])
    return model


@pytest.mark.parametrize("key", [b"Mox Tree", b"Light Data", b"Attributes", b"Resources"])
def test_streams_are_inflated_no_further_than_they_are_read(tmp_path: Path, key: bytes) -> None:
    path = tmp_path / "bomb.mox"
    path.write_bytes(_file(_small_model(), key, 128 * _MEBIBYTE, _zeros(128 * _MEBIBYTE)))
    said, growth = _growth(path, 0)
    assert said == "FormatError"
    assert growth < 32 * _MEBIBYTE


def test_a_part_of_a_huge_block_takes_no_more_than_itself(tmp_path: Path) -> None:
    path = tmp_path / "bomb.mox"
    path.write_bytes(_file(_small_model(), b"Heavy Data", 128 * _MEBIBYTE, _zeros(128 * _MEBIBYTE)))
    said, growth = _growth(path, 64 * _MEBIBYTE)
    assert said == "read"
    assert growth < 32 * _MEBIBYTE


def test_memory_grows_with_what_is_there_not_with_what_is_stated(tmp_path: Path) -> None:
    model = build.Builder()
    model.dataset(model.shape("S"), "D", 12, [0] * (4 * _MEBIBYTE))
    # As large as the dataset should be, and something behind that is no content.
    stream = _zeros(16 * _MEBIBYTE) + bytes(_MEBIBYTE)
    path = tmp_path / "bomb.mox"
    path.write_bytes(_file(model, b"Heavy Data", 512 * _MEBIBYTE, stream))
    for bound in (0, 1024 * _MEBIBYTE):
        said, growth = _growth(path, bound)
        assert said == "FormatError"
        assert growth < 64 * _MEBIBYTE


def test_a_tree_beyond_the_bound_is_refused(tmp_path: Path) -> None:
    import moxwriter

    path = tmp_path / "model.mox"
    path.write_bytes(_small_model().file())
    with pytest.raises(moxwriter.OutOfMemoryError, match="tree_bytes"):
        moxwriter.open(path, tree_bytes=100)


def test_a_lack_of_memory_is_an_error_of_the_family(tmp_path: Path) -> None:
    model = build.Builder()
    model.dataset(model.shape("S"), "D", 12, [0] * (4 * _MEBIBYTE))
    path = tmp_path / "model.mox"
    path.write_bytes(model.file())
    limit = (
        "import moxwriter, resource\n"
        "pages = int(open('/proc/self/statm').read().split()[0])\n"
        "bound = pages * resource.getpagesize() + (8 << 20)\n"
        "resource.setrlimit(resource.RLIMIT_AS, (bound, bound))\n"
    )
    command = [sys.executable, "-B", "-c", limit + _CHILD, str(path), str(1 << 28)]
    answer = subprocess.run(
        command, env={"PYTHONPATH": str(_PACKAGE)}, check=True, capture_output=True
    )
    assert answer.stdout.startswith(b"OutOfMemoryError"), answer


_STEPS = """
import resource, sys
import numpy as np, moxwriter
with moxwriter.open(sys.argv[1]) as file:
    node, count = file["R/S"], 0
    for number, step in enumerate(node.steps):
        values = node["Displacement", step]
        assert values[0, 0] == number and values[-1, -1] == number + values.size // 1000
        count += values.nbytes
print(count, resource.getrusage(resource.RUSAGE_SELF).ru_maxrss * 1024)
"""


@pytest.mark.skipif("MOXWRITER_LARGE_FILES" not in os.environ, reason="MOXWRITER_LARGE_FILES is not set")
def test_steps_of_two_gigabytes_are_read_one_by_one(tmp_path: Path) -> None:
    import moxwriter

    path = tmp_path / "large.mox"
    rows = (100 * _MEBIBYTE) // 12
    with moxwriter.Model(path) as model:
        model.add_node(moxwriter.NodeType.RootGroup, "R")
        shape = model.add_node(moxwriter.NodeType.Shape, "S")
        values = (np.arange(1, 3 * rows + 1) // 1000).reshape(rows, 3).astype(np.float32)
        for number in range(20):
            model.add_array_property(
                moxwriter.DatasetType.Displacement, values, shape, "Step %d" % number
            )
            values += 1
    command = [sys.executable, "-B", "-c", _STEPS, str(path)]
    environment = {"PYTHONPATH": str(_PACKAGE)}
    answer = subprocess.run(command, env=environment, check=True, capture_output=True)
    count, peak = map(int, answer.stdout.split())
    print("%d bytes read, %d bytes at most in memory" % (count, peak))
    assert count == 20 * 12 * rows
    assert peak < 600 * 1000 * 1000
