"""The reader agrees with `mox`, on sound files and on damaged ones."""

from __future__ import annotations

import json
import os
import random
import struct
import subprocess
import zlib
from pathlib import Path
from typing import Any, Dict, Iterable, Iterator, List, Optional, Tuple

import agreement
import build
import damage
import numpy as np

import moxwriter


def _listing(mox: str, model: Path) -> Dict[str, Any]:
    answer = subprocess.run([mox, "ls", "--json", str(model)], check=True, capture_output=True)
    listing: Dict[str, Any] = json.loads(answer.stdout)
    return listing


def _rounded(numbers: Any) -> List[float]:
    """As floats: the listing has the shortest text that reads back the same float."""
    return [float(np.float32(number)) for number in numbers]


def _attributes(listed: List[Dict[str, Any]]) -> Dict[str, Any]:
    exact = {a["name"]: a["value"] for a in listed if a["type"] != "float"}
    return {
        **exact,
        **{a["name"]: float(np.float32(a["value"])) for a in listed if a["type"] == "float"},
    }


def _check_datasets(node: moxwriter.Node, listed: List[Dict[str, Any]]) -> None:
    assert [(d.name, d.step) for d in node.datasets] == [(d["dataset"], d["step"]) for d in listed]
    for dataset, expected in zip(node.datasets, listed):
        assert dataset.type == expected["type"]
        assert dataset.dtype.name.startswith(expected["elementType"])
        assert (dataset.rows, dataset.width) == (expected["rows"], expected["width"])
        assert dataset.vibration == expected["vibration"]
        assert dict(dataset.attributes) == _attributes(expected["attributes"])
        link: Optional[Dict[str, Any]] = None
        if dataset.link is not None:
            geometry = next(
                n for n in dataset.link.node.children + [dataset.link.node] if n.kind == "geometry"
            )
            link = {"node": geometry.id, "dataset": dataset.link.name, "step": dataset.link.step}
        assert link == expected["link"]


def _check_node(node: moxwriter.Node, listed: Dict[str, Any]) -> None:
    assert (node.id, node.name, node.kind.capitalize()) == (
        listed["id"],
        listed["name"],
        listed["type"],
    )
    assert (node.parent.id if node.parent else 0) == listed["parent"]
    if node.kind == "group":
        assert node.transform is not None
        for field in ("translation", "rotation", "scale"):
            assert list(getattr(node.transform, field)) == _rounded(listed[field])
        assert node.flag == listed["flag"]
        assert dict(node.attributes) == _attributes(listed["attributes"])
    elif node.kind == "shape":
        assert node.material is not None
        for color in ("diffuse", "specular", "emissive", "ambient"):
            assert list(getattr(node.material, color)) == _rounded(listed["material"][color])
        numbers = [node.material.transparency, node.material.shininess]
        assert numbers == _rounded(listed["material"][key] for key in ("transparency", "shininess"))
        assert node.material.flag == listed["material"]["flag"]
    elif node.kind == "geometry":
        _check_datasets(node, listed["datasets"])


def _check_model(mox: str, model: Path) -> int:
    listing = _listing(mox, model)
    count = 0
    with moxwriter.open(model) as file:
        nodes = list(file.nodes())
        assert len(nodes) == len(listing["nodes"])
        # The listing goes down each branch before the next.
        for node, listed in zip(nodes, sorted(listing["nodes"], key=lambda node: node["id"])):
            _check_node(node, listed)
        writing, expected = file.writings[0], listing["writings"][0]
        assert [writing.text1, writing.text2, writing.text] == expected["texts"]
        assert (writing.time, writing.host) == (expected["time"], expected["host"])
        assert list(file.steps) == [step["name"] for step in listing["steps"]]
        for node in file.values():
            for dataset in node.datasets:
                expected_values = agreement.dumped(mox, model, dataset)
                assert expected_values is not None
                assert agreement.same(node[dataset.key], expected_values), dataset
                count += 1
    return count


def test_every_value_of_the_examples(mox: str, examples: List[Path]) -> None:
    assert sum(_check_model(mox, model) for model in examples) > 100


def test_every_value_of_translated_results(mox: str, translated: List[Path]) -> None:
    assert sum(_check_model(mox, model) for model in translated) > 300


def test_whether_damaged_files_give_their_values(
    mox: str, examples: List[Path], translated: List[Path], tmp_path: Path
) -> None:
    count = int(os.environ.get("MOXWRITER_DAMAGED_FILES", "300"))
    counts = agreement.compare_damaged(mox, examples + translated, range(count), tmp_path)
    print(counts)
    for kind in ("sound", "damaged", "incomplete", "damaged values", "datasets compared"):
        assert counts[kind] > 0, counts


def _plain_model() -> bytes:
    """A model whose blocks are not compressed, so that each of its bytes has a meaning."""
    model = build.Builder("R")
    shape = model.shape("S")
    model.dataset(shape, "D", 12, [1, 2], "1", a=1, b=0.5, c="t", d=np.float64(2))
    model.link(shape, "L", 12, 3, 0)
    model.dataset(shape, "E", 13, [[1.0, 2.0, 3.0]])
    blocks = [build.block(key, raw, compress=False) for key, raw in model.streams().items()]
    return build.container(blocks)


def test_each_byte_of_a_file_that_is_not_as_it_should_be(mox: str, tmp_path: Path) -> None:
    original = _plain_model()
    choice = random.Random(1)
    # Of the spare slots, the first and the last are enough.
    places = [at for at in range(len(original)) if not 20 + 7 * 139 <= at < 20 + 19 * 139]
    files = []
    for at in places:
        raw = bytearray(original)
        raw[at] ^= choice.choice([1, 2, 4, 8, 16, 32, 64, 128, choice.randrange(1, 256)])
        files.append(tmp_path / ("%d.mox" % at))
        files[-1].write_bytes(raw)
    for first in range(0, len(files), 100):
        some = files[first : first + 100]
        for file, verdict in zip(some, agreement.verdicts(mox, some)):
            agreement.compare(mox, file, verdict, choice, dumped_datasets=0)


def _blocks() -> List[Tuple[bytes, bytes, int]]:
    """The blocks of a small model: key, bytes in the file, transformations."""
    model = build.Builder("R")
    shape = model.shape("S")
    model.dataset(shape, "D", 12, [1, 2], "1", a=1)
    return [build.block(key, raw) for key, raw in model.streams().items()]


def _broken_files() -> Iterator[bytes]:
    """Files that are broken in one way each."""
    blocks = _blocks()
    sound = build.container(blocks)
    last_entry = 20 + 19 * 139
    # A byte behind the last block; an index that was written in part.
    yield sound + b"\0"
    yield sound[: last_entry + 10] + bytes(129) + sound[last_entry + 139 :]
    # A block behind a spare slot.
    yield build.container(blocks[:-1] + [(b"\x0bEmpty Block ", b"", 0), blocks[-1]])
    for number, (key, raw, _) in enumerate(blocks):
        (length,) = struct.unpack("<I", raw[:4])
        content = zlib.decompress(raw[4:])
        for changed in (
            # Bytes behind the zlib stream, one that ends early, and lengths that it has not.
            (key, raw + b"\0", 1),
            (key, raw[:-1], 1),
            (key, struct.pack("<I", length + 1) + raw[4:], 1),
            (key, struct.pack("<I", length - 1) + raw[4:], 1),
            (key, struct.pack("<I", 0xFFFFFFFF) + raw[4:], 1),
            (key, raw[:3], 1),
            (key, b"", 1),
        ):
            yield build.container(blocks[:number] + [changed] + blocks[number + 1 :])
        if key != b"Heavy Data":
            # A byte that belongs to no record.
            longer = build.block(key, content + b"\0")
            yield build.container(blocks[:number] + [longer] + blocks[number + 1 :])
        # A block without content whose stream is damaged.
        yield build.container(blocks + [(key, bytes(4) + b"x", 1)])
    yield build.container(blocks + [build.block(b"View Points", b"x")])


def _with_array(kind: int, count: int, width: int, position: int, name: str = "X") -> bytes:
    """A model with a dataset "D" of two integers at 0, and the header of another one."""
    model = build.Builder("R")
    shape = model.shape("S")
    model.dataset(shape, "D", 12, [1, 2])
    fields = struct.pack("<IBIB11xQB", kind | 5 << 24, 0, count, width, position, 0)
    model.header(shape, name, fields, {})
    return model.file()


def _broken_records() -> Iterator[bytes]:
    """Models whose records do not fit each other."""
    yield _with_array(12, 1, 1, 4)  # overlaps "D"
    yield _with_array(12, 1, 1, 0)
    yield _with_array(12, 3, 1, 0)
    yield _with_array(13, 2, 3, 0)  # no whole rows
    yield _with_array(12, 2, 3, 0)
    yield _with_array(12, 2, 1, 0, "D")  # the name is taken
    model = build.Builder("R")
    model._add("a name, but no type", "", "", 1, (b"", b"", b""))
    yield model.file()
    streams = {**build.Builder("R").streams(), b"Global Information": bytes(8)}
    yield build.container([build.block(*item) for item in streams.items()])


def _check_refused(mox: str, folder: Path, raw: Iterable[bytes]) -> None:
    files = []
    for number, content in enumerate(raw):
        files.append(folder / ("%d.mox" % number))
        files[-1].write_bytes(content)
    for file, verdict in zip(files, agreement.verdicts(mox, files)):
        said, _ = agreement.compare(mox, file, verdict, random.Random(1), dumped_datasets=0)
        assert said != "sound", file


def test_files_that_are_broken_in_one_way(mox: str, tmp_path: Path) -> None:
    _check_refused(mox, tmp_path, _broken_files())


def test_records_that_do_not_fit_each_other(mox: str, tmp_path: Path) -> None:
    _check_refused(mox, tmp_path, _broken_records())


def test_datasets_may_be_the_same_piece(mox: str, tmp_path: Path) -> None:
    path = tmp_path / "same.mox"
    path.write_bytes(_with_array(12, 2, 1, 0))
    (verdict,) = agreement.verdicts(mox, [path])
    assert agreement.compare(mox, path, verdict, random.Random(1))[0] == "sound"


def test_index_blocks_that_are_not_as_they_should_be(
    mox: str, examples: List[Path], tmp_path: Path
) -> None:
    model = next(path for path in examples if path.name == "03_transient_blocks.mox")
    sound = model.read_bytes()
    parts = damage.split(sound)
    assert len(parts) > 20
    entry = 20 + 19 * 139
    block = 2800 + sum(len(part.block) for part in parts[:19])
    cases = [sound + b"\0"]
    # Transformations, size, number of entries, and the entry of the next slot.
    for at in (entry + 137, entry + 133, block, block + 1, block + 4, block + 4 + 137):
        cases.append(sound[:at] + bytes([sound[at] ^ 1]) + sound[at + 1 :])
    cases.append(sound[:block] + bytes(4) + sound[block + 4 :])
    _check_refused(mox, tmp_path, cases)
