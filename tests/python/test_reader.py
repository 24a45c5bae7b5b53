"""What the reader makes of a file."""

from __future__ import annotations

import os
import struct
import threading
from pathlib import Path
from typing import Any, List

import build
import numpy as np
import pytest

import moxwriter


def _opened(tmp_path: Path, raw: bytes, **settings: Any) -> moxwriter.File:
    path = tmp_path / "model.mox"
    path.write_bytes(raw)
    return moxwriter.open(path, **settings)


def _model() -> build.Builder:
    model = build.Builder("Beam")
    steel = model.shape("Steel")
    model.dataset(steel, "Coordinates", 1, np.arange(6.0).reshape(2, 3))
    model.dataset(
        steel, "Displacement", 13, np.arange(6.0).reshape(2, 3) / 7, "Load 1", Time=0.5, N=1
    )
    model.dataset(steel, "Temperature", 12, np.array([1.5, np.nan]), "Load 1", Time=0.5, N=2)
    model.dataset(steel, "Node Ids", 12, [7, 4294967295])
    return model


def test_a_dataset_is_found_by_path_name_and_step(tmp_path: Path) -> None:
    with _opened(tmp_path, _model().file()) as file:
        displacement = file["Beam/Steel"]["Displacement", "Load 1"]
        assert displacement.dtype == np.float32 and displacement.shape == (2, 3)
        np.testing.assert_array_equal(
            displacement, np.arange(6, dtype=np.float32).reshape(2, 3) / np.float32(7)
        )
        ids = file["Beam/Steel"]["Node Ids"]
        assert ids.dtype == np.uint32 and ids.tolist() == [7, 4294967295]
        ids[0] = 8
        assert file["Beam/Steel"]["Node Ids"][0] == 7


def test_mappings_list_what_they_have(tmp_path: Path) -> None:
    with _opened(tmp_path, _model().file()) as file:
        assert list(file) == ["Beam", "Beam/Steel"] and len(file) == 2
        node = file["Beam/Steel"]
        keys = ["Coordinates", ("Displacement", "Load 1"), ("Temperature", "Load 1"), "Node Ids"]
        assert list(node) == keys and len(node) == 4
        assert all(key in node for key in keys)
        assert "Displacement" not in node and 5 not in node
        assert node.steps == ["Load 1"]
        assert file["#3"].kind == "geometry" and list(file["Beam/Steel/Steel"]) == keys
        assert file.root and not len(file.root)


def test_steps_have_what_all_their_datasets_have(tmp_path: Path) -> None:
    with _opened(tmp_path, _model().file()) as file:
        step = file.steps["Load 1"]
        assert dict(step.attributes) == {"Time": 0.5}
        assert [dataset.name for dataset in step.datasets] == ["Displacement", "Temperature"]
        assert dict(step.datasets[0].attributes) == {"N": 1, "Time": 0.5}


@pytest.mark.parametrize(
    "key", ["Displacement", ("Displacement", "Load 2"), "x", 3, "Displacement\x1eLoad 1"]
)
def test_a_missing_dataset_is_a_key_error(tmp_path: Path, key: Any) -> None:
    with _opened(tmp_path, _model().file()) as file:
        with pytest.raises(KeyError, match='^"Beam/Steel" has no dataset') as caught:
            file["Beam/Steel"][key]
        assert isinstance(caught.value, moxwriter.Error)


@pytest.mark.parametrize(
    "path", ["", "Steel", "Beam/", "/Beam", "Beam/Steel/x", "#0", "#4", "#", "#x", "Beam\\"]
)
def test_a_missing_path_is_a_key_error(tmp_path: Path, path: str) -> None:
    with _opened(tmp_path, _model().file()) as file:
        assert path not in file
        with pytest.raises(moxwriter.MissingKeyError):
            file[path]


def test_attributes_have_the_types_that_were_stored(tmp_path: Path) -> None:
    model = build.Builder()
    model.group("A", a=4294967295, b=0.1, c=np.float64(0.1), d="\u00e4", e="", f=2)
    with _opened(tmp_path, model.file()) as file:
        attributes = file["Root/A"].attributes
        expected = {
            "a": 4294967295,
            "b": float(np.float32(0.1)),
            "c": 0.1,
            "d": "\u00e4",
            "e": "",
            "f": 2,
        }
        assert dict(attributes) == expected
        with pytest.raises(TypeError):
            attributes["a"] = 1  # type: ignore[index]


def test_odd_names_have_paths(tmp_path: Path) -> None:
    model = build.Builder("#a")
    model.group("b/c\\d")
    model.group("\udcff")
    with _opened(tmp_path, model.file()) as file:
        assert list(file) == ["\\#a", "\\#a/b\\/c\\\\d", "\\#a/\udcff"]
        assert [file[path].id for path in file] == [1, 2, 3]
        # What is printed has to be printable.
        str(pytest.raises(KeyError, file["\\#a/\udcff"].dataset, "\udcff").value).encode()


def test_nodes_of_the_same_path_are_listed_by_their_ids(tmp_path: Path) -> None:
    model = build.Builder()
    for group in (model.group("A"), model.group("A")):
        model.group("B", group)
    with _opened(tmp_path, model.file()) as file:
        assert list(file) == ["Root", "#2", "#3", "#4", "#5"]
        assert [node.id for node in file.values()] == [1, 2, 3, 4, 5]
        with pytest.raises(moxwriter.AmbiguousPathError, match="#4, #5"):
            file["Root/A/B"]


def test_links_share_the_values_of_where_they_end(tmp_path: Path) -> None:
    model = _model()
    other = model.shape("Other")
    model.link(other, "Second", 13, other + 1, 1)
    model.link(other, "First", 13, 3, 1, "Load 1")
    with _opened(tmp_path, model.file()) as file:
        second = file["Beam/Other"].dataset("Second")
        assert second.link is not None and second.link.key == ("First", "Load 1")
        assert second.link.link is not None and second.link.link.node == file["Beam/Steel"]
        np.testing.assert_array_equal(second.read(), file["Beam/Steel"]["Displacement", "Load 1"])


@pytest.mark.parametrize("target", [(5, 0), (3, 4), (2, 0), (0, 0), (9, 0)])
def test_links_that_lead_nowhere_or_in_a_circle_are_refused(tmp_path: Path, target: Any) -> None:
    model = _model()
    other = model.shape("Other")
    model.link(other, "Link", 13, *target)
    with pytest.raises(
        moxwriter.FormatError, match="circle" if target == (5, 0) else "does not exist"
    ):
        _opened(tmp_path, model.file())


def test_transforms_multiply_from_the_root_down(tmp_path: Path) -> None:
    model = build.Builder()
    # A quarter turn about z, after stretching x, before moving.
    outer = model.group("A", 1, (1, 2, 3, 0, 0, 2, np.pi / 2, 2, 1, 1))
    model.group("B", outer, (10, 0, 0, 0, 0, 0, 1, 1, 1, 1))
    with _opened(tmp_path, model.file()) as file:
        moved = file["Root/A/B"].matrix @ [1, 0, 0, 1]
        np.testing.assert_allclose(moved, [1, 2 + 22, 3, 1], atol=1e-5)


def test_a_chain_of_many_nodes_opens(tmp_path: Path) -> None:
    model = build.Builder()
    for parent in range(1, 400):
        model.group("a", parent)
    with _opened(tmp_path, model.file()) as file:
        assert file["Root" + "/a" * 399].id == 400
        assert len(list(file)) == 400
        assert file.node(400).matrix.tolist() == np.eye(4).tolist()


def test_inflated_blocks_are_kept_within_the_bound(tmp_path: Path) -> None:
    model = build.Builder()
    shape = model.shape("S")
    streams = model.streams()
    for number in range(4):
        model.dataset(shape, "D%d" % number, 12, np.full(1000, number))
    streams = model.streams()
    values = streams.pop(b"Heavy Data")
    pieces = [
        build.block(b"Heavy Data", values[first : first + 4000]) for first in range(0, 16000, 4000)
    ]
    raw = build.container(pieces + [build.block(*item) for item in streams.items()])
    for bound, kept in ((0, 0), (3999, 0), (4000, 4000), (11999, 8000), (1 << 20, 16000)):
        with _opened(tmp_path, raw, cache_bytes=bound) as file:
            for _ in range(2):
                for number in range(4):
                    assert set(file["Root/S"]["D%d" % number].tolist()) == {number}
            assert file._heavy.kept_bytes == kept


def test_threads_may_read_from_one_file(tmp_path: Path) -> None:
    model = build.Builder()
    shape = model.shape("S")
    for number in range(20):
        model.dataset(shape, "D%d" % number, 12, np.full(20000, number))
    wrong: List[int] = []
    with _opened(tmp_path, model.file(), cache_bytes=0) as file:

        def read(first: int) -> None:
            for number in range(first, 20, 4):
                if set(file["Root/S"]["D%d" % number].tolist()) != {number}:
                    wrong.append(number)

        threads = [threading.Thread(target=read, args=(first,)) for first in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
    assert not wrong


def test_a_closed_file_gives_nothing_more(tmp_path: Path) -> None:
    file = _opened(tmp_path, _model().file())
    node = file["Beam/Steel"]
    node["Coordinates"]
    file.close()
    with pytest.raises(moxwriter.FileError, match="has been closed"):
        node["Coordinates"]


def test_what_cannot_be_opened_is_said_in_one_sentence(tmp_path: Path) -> None:
    os.mkfifo(tmp_path / "pipe")
    for path in (tmp_path / "none", tmp_path, tmp_path / "pipe", "a\0b"):
        with pytest.raises(moxwriter.FileError) as caught:
            moxwriter.open(path)
        assert isinstance(caught.value, OSError) and "\n" not in str(caught.value)


def test_what_is_no_model_or_not_whole_is_told_apart(tmp_path: Path) -> None:
    with pytest.raises(moxwriter.FormatError, match="not a mox file"):
        _opened(tmp_path, b"x" * 5000)
    with pytest.raises(moxwriter.IncompleteFileError, match="incomplete: "):
        _opened(tmp_path, _model().file()[:-1])


def test_values_of_a_damaged_block_are_not_given(tmp_path: Path) -> None:
    raw = bytearray(_model().file())
    # The last byte of the checksum of the first block, which holds the values.
    (size,) = struct.unpack_from("<I", raw, 20 + 133)
    raw[2800 + size - 1] ^= 1
    for bound in (0, 1 << 20):
        with _opened(tmp_path, bytes(raw), cache_bytes=bound) as file:
            for key in file["Beam/Steel"]:
                with pytest.raises(moxwriter.FormatError, match="zlib stream is damaged"):
                    file["Beam/Steel"][key]
            with pytest.raises(moxwriter.FormatError):
                file.check()
