"""Models that Python writes: what is read back of them, and what is refused."""

from __future__ import annotations

import array
import builtins
import gc
import os
import re
import subprocess
import sys
import threading
import time
from pathlib import Path
from typing import Any, Callable, Dict, List, Tuple

import agreement
import numpy as np
import pytest

import moxwriter
from moxwriter import DatasetType, Encoder, Model, NodeType, PropertyType

_HEADERS = Path(__file__).resolve().parents[2] / "include" / "Zyl2" / "Mox2"


def _is_sound(mox: str, path: Path) -> bool:
    return bool(agreement.verdicts(mox, [path])[0]["ok"])


def _open_model(path: Path) -> Tuple[Model, int]:
    """A model with a shape "R/S", and the shape's id."""
    model = Model(path, overwrite=True)
    model.add_node(NodeType.RootGroup, "R")
    return model, model.add_node(NodeType.Shape, "S")


def _written(path: Path, type: DatasetType, values: object) -> np.ndarray:
    model, shape = _open_model(path)
    model.add_array_property(type, values, shape, name="D")
    model.close()
    with moxwriter.open(path) as file:
        return file["R/S"]["D"]


@pytest.mark.parametrize("kind", [NodeType, PropertyType, DatasetType, Encoder])
def test_enumerators_are_those_of_the_library(kind: Any) -> None:
    header = (_HEADERS / (kind.__name__ + ".h")).read_text()
    listed = {name: int(value) for name, value in re.findall(r"^    (\w+) = (\d+)", header, re.M)}
    assert listed == {member.name: member.value for member in kind}


def test_the_package_offers_each_name_of_its_writing_half() -> None:
    from moxwriter import writer

    assert moxwriter._WRITING == frozenset(writer.__all__)
    for name in writer.__all__:
        assert getattr(moxwriter, name) is getattr(writer, name)


def test_importing_all_leaves_the_functions_of_python_in_place() -> None:
    names: Dict[str, Any] = {}
    exec("from moxwriter import *", names)
    assert "File" in names
    assert not set(names) & set(dir(builtins))


def test_a_model_is_read_as_it_was_written(mox: str, tmp_path: Path) -> None:
    path = tmp_path / "car.mox"
    values = np.arange(6, dtype=np.float64).reshape(2, 3) / 3
    attributes = {
        "float": 0.1,
        "NumPy's": np.float32(0.2),
        "int": -7,
        "unsigned": 4294967295,
        "text": "ü",
        b"raw\xff": b"\xfe",
    }
    with Model(str(path), text1="host", text2=b"2") as model:
        assert model.add_node(NodeType.FlaggedRootGroup, "car", attributes) == 1
        ids = model.add_assembly_components(["/car/body/door", "/car/wheels/", ""])
        assert ids == [4, 5, 0]
        assert model.add_assembly_components({"|car|x": {"a": 1}, "": {}}, "|") == [0, 7]
        assert model.get_node_id("/car/wheels") == model.get_node_id(["car", "wheels"]) == 5
        assert model.get_node_id("/car/none") == 0
        model.set_current_node_id(ids[0])
        assert (model.move_to_parent_node(), model.move_to_parent_node()) == (3, 2)
        roof = model.add_node(NodeType.Shape, b"roof\xff")
        transform = {PropertyType.Translation: (1, 2, 0.5), PropertyType.Scale: np.ones(3)}
        model.set_node_data(5, transform, {"Revision": np.int64(3)})
        material = {PropertyType.DiffuseColor: [1, 0, 0.5], PropertyType.Transparency: 1}
        model.set_node_data(roof, material)
        steps = ["1", ("2", {"Time": 0.5, "a": 1})]
        model.add_array_property(
            DatasetType.Displacement, values, [ids[0], roof], steps, {"Unit": "mm", "a": 2}
        )
        model.add_array_property(DatasetType.NodeIds, np.array([3, 9]), np.array([roof]))
        model.add_array_property(DatasetType.Result10, values[:, 0], roof, name="E")
    assert model.closed
    assert _is_sound(mox, path)
    with moxwriter.open(path) as file:
        assert (file.root.flag, file.writings[0].text1, file.writings[0].text2) == (
            True,
            "host",
            "2",
        )
        assert dict(file.root.attributes) == {
            "float": np.float32(0.1),
            "NumPy's": np.float32(0.2),
            "int": 4294967289,
            "unsigned": 4294967295,
            "text": "ü",
            "raw\udcff": "\udcfe",
        }
        wheels = file["car/wheels"]
        assert wheels.transform is not None and wheels.transform.translation == (1, 2, 0.5)
        assert wheels.transform.scale == (1, 1, 1) and wheels.attributes == {"Revision": 3}
        found = file["car/body/roof\udcff"]
        assert found.material is not None and found.material.diffuse[:3] == (1, 0, 0.5)
        assert found.material.transparency == 1
        assert (found["Displacement", "2"] == values.astype(np.float32)).all()
        link = found.dataset("Displacement", "2").link
        assert link is not None and link.node == file["car/body/door"] and link.step == "1"
        first = file["car/body/door"].dataset("Displacement", "1")
        assert first.attributes == {"Unit": "mm", "a": 2}
        assert found["Node Ids"].tolist() == [3, 9]
        assert (found["E"] == values[:, 0].astype(np.float32)).all()


def test_a_model_may_be_saved_anew(mox: str, tmp_path: Path) -> None:
    model = Model()
    assert model.closed
    for name in ("a.mox", "b.mox"):
        model.save_to(tmp_path / name)
        model.add_node(NodeType.Group, name)
        model.close()
        model.close()
        assert _is_sound(mox, tmp_path / name)


def test_what_was_added_can_be_recovered(tmp_path: Path) -> None:
    path = tmp_path / "a.mox"
    with Model(path, recoverable=True) as model:
        model.add_node(NodeType.RootGroup, "R")
        assert model.checkpoint()
        assert (tmp_path / "a.mox.recovery" / "log").exists()
    assert [entry.name for entry in tmp_path.iterdir()] == ["a.mox"]
    with Model(path, overwrite=True, recoverable=False) as model:
        assert not model.checkpoint()
    with pytest.raises(moxwriter.InvalidObjectState):
        model.checkpoint()


def test_threads_and_the_size_of_blocks_can_be_chosen(mox: str, tmp_path: Path) -> None:
    sizes = []
    for block_size in (None, 1000):
        path = tmp_path / ("%s.mox" % block_size)
        with Model(path, threads=2, block_size=block_size) as model:
            model.add_node(NodeType.RootGroup, "R")
            shape = model.add_node(NodeType.Shape, "S")
            for name in ("a", "b"):
                values = np.zeros(500)
                model.add_array_property(DatasetType.Result10, values, shape, name=name)
        assert _is_sound(mox, path)
        assert model.waited_seconds >= 0
        sizes.append(path.stat().st_size)
    # One more block.
    assert sizes[1] > sizes[0]


def test_of_a_large_integer_the_low_32_bits_are_stored(tmp_path: Path) -> None:
    path = tmp_path / "a.mox"
    given = {"a": (1 << 40) + 7, "b": -1 - (1 << 40), "c": (1 << 64) - 2, "d": np.int64(1 << 32)}
    with Model(path) as model:
        model.add_node(NodeType.RootGroup, "R", given)
    with moxwriter.open(path) as file:
        stored = file.root.attributes
    assert stored == {name: int(value) % (1 << 32) for name, value in given.items()}


@pytest.mark.parametrize("encoder", Encoder)
def test_an_encoder_compresses_or_is_refused(encoder: Encoder, mox: str, tmp_path: Path) -> None:
    path = tmp_path / "a.mox"
    try:
        with Model(path, encoder=encoder) as model:
            model.add_node(NodeType.Group, "R", {"Text": "x" * 200})
    except moxwriter.InvalidArguments as refusal:
        assert encoder in (Encoder.Libdeflate, Encoder.Isal)
        assert encoder.name.lower() in refusal.detail.lower().replace("-", "")
        return
    assert _is_sound(mox, path)


_TABLE = np.arange(24, dtype=np.float64).reshape(4, 6)
_RECORDS = np.zeros(5, dtype=[("flag", "u1"), ("x", "f8", (3,)), ("id", "i4")])
_RECORDS["x"] = np.arange(15).reshape(5, 3)
_RECORDS["id"] = np.arange(5)
_READ_ONLY = np.arange(3.0)
_READ_ONLY.flags.writeable = False
_VIEWS: Dict[str, np.ndarray] = {
    **{
        "of " + name: np.arange(6).reshape(2, 3).astype(name)
        for name in ("f4", "f8", "i4", "u4", "i8", "u8")
    },
    "in Fortran order": np.asfortranarray(_TABLE),
    "transposed": _TABLE.T,
    "of some columns": _TABLE[:, 1:4],
    "of every second row and column": _TABLE[::2, ::2],
    "backwards": _TABLE[::-1, ::-2],
    "of one value again and again": np.broadcast_to(np.float64(2), (3, 3)),
    "of a field": _RECORDS["id"],
    "of an unaligned field": _RECORDS["x"],
    "that may not be written": _READ_ONLY,
    "of NumPy's long long": np.arange(3, dtype=np.longlong),
    "little-endian": np.arange(3, dtype="<f8"),
}
_WIDTHS = {1: DatasetType.Result10, 3: DatasetType.Result11, 6: DatasetType.Result12}
_CODES = "float32 float64 int32 uint32 int64 uint64".split()


@pytest.mark.parametrize("values", _VIEWS.values(), ids=_VIEWS.keys())
def test_arrays_are_written_from_where_they_are(values: np.ndarray, tmp_path: Path) -> None:
    from moxwriter import _writer

    address, code, rows, columns, row_stride, column_stride = _writer.view(values)
    assert address == values.__array_interface__["data"][0]
    assert _CODES[code] == values.dtype.name
    assert (rows, columns) == (values.shape + (1,))[:2]
    assert row_stride == values.strides[0]
    assert values.ndim == 1 or column_stride == values.strides[1]

    if columns not in _WIDTHS:
        values = values[:, :3]
        columns = 3
    assert _written(tmp_path / "a.mox", _WIDTHS[columns], values).tolist() == values.tolist()


def test_what_else_has_a_buffer_is_an_array(tmp_path: Path) -> None:
    numbers = array.array("d", [1, 2, 3])
    for values in (numbers, memoryview(numbers), memoryview(np.ones((2, 1)))):
        found = _written(tmp_path / "a.mox", DatasetType.Result10, values)
        assert found.tolist() == np.asarray(values).ravel().tolist()
    # Nothing holds its buffer any more.
    numbers.append(4)


def test_no_reference_to_an_array_is_left(tmp_path: Path) -> None:
    model, shape = _open_model(tmp_path / "a.mox")
    values = np.ones((2, 3))
    before = sys.getrefcount(values)
    for type in (DatasetType.Displacement, DatasetType.NodeIds, DatasetType.Result10, 99):
        try:
            model.add_array_property(type, values, shape)
        except moxwriter.WritingError:
            pass
    model.close()
    assert sys.getrefcount(values) == before


@pytest.mark.parametrize(
    "name",
    "bool int8 uint8 int16 uint16 float16 longdouble complex64 complex128 >f4 >f8 >i4 >u8 "
    "object S4 U4 datetime64[s] timedelta64[D]".split(),
)
def test_other_elements_are_refused_by_name(name: str, tmp_path: Path) -> None:
    model, shape = _open_model(tmp_path / "a.mox")
    values = np.zeros(3, dtype=name)
    with pytest.raises(moxwriter.InvalidArguments) as refusal:
        model.add_array_property(DatasetType.NodeIds, values, shape)
    assert refusal.value.text == "Invalid arguments"
    assert "elements are %s;" % values.dtype in refusal.value.detail
    assert "float32, float64, int32, uint32, int64 and uint64" in refusal.value.detail


@pytest.mark.parametrize(
    "values, detail",
    [
        (np.array(1.0), "no dimension"),
        (np.zeros((2, 3, 1)), "has 3 dimensions"),
        ([1, 2], "type list, which is no array"),
        (None, "type NoneType, which is no array"),
        (b"\1\2\3\4", "of the format 'B'"),
        (_RECORDS, r"elements are \[\('flag'"),
        (np.ma.array([1, 2], mask=[0, 1]), "masks"),
        (memoryview(np.zeros(3, "f2")), "of the format 'e'"),
    ],
)
def test_what_is_no_array_is_refused(values: object, detail: str, tmp_path: Path) -> None:
    model, shape = _open_model(tmp_path / "a.mox")
    with pytest.raises(moxwriter.InvalidArguments, match="^Invalid arguments: .*" + detail):
        model.add_array_property(DatasetType.NodeIds, values, shape)


def test_an_array_that_masks_nothing_is_one(tmp_path: Path) -> None:
    found = _written(tmp_path / "a.mox", DatasetType.NodeIds, np.ma.array([1, 2], mask=[0, 0]))
    assert found.tolist() == [1, 2]


_Call = Callable[[Model, int], object]
_FAILURES: List[Tuple[_Call, Any, Any, str, str]] = [
    (
        lambda m, s: m.add_array_property(DatasetType.Displacement, np.ones((2, 2)), s),
        moxwriter.InvalidArguments,
        ValueError,
        "Invalid arguments",
        "Displacement needs 3 columns, the array has 2",
    ),
    (
        lambda m, s: m.add_array_property(DatasetType.NodeIds, np.array([1, -1]), s),
        moxwriter.OverflowError,
        OverflowError,
        "Overflow error",
        "NodeIds: row 1, column 0 holds -1, which is beyond the range of 0 to 4294967295",
    ),
    (
        lambda m, s: m.add_array_property(DatasetType.NodeIds, np.array([1]), 99),
        moxwriter.KeyNotFound,
        KeyError,
        "Key not found",
        "no node has the id 99; the last one is 3",
    ),
    (
        lambda m, s: m.add_array_property(DatasetType.NodeIds, np.array([1]), [s, -1]),
        moxwriter.OutOfBounds,
        IndexError,
        "Out of bounds error",
        "no node has the id -1",
    ),
    (
        lambda m, s: m.add_array_property(99, np.array([1]), s),
        moxwriter.InvalidArguments,
        ValueError,
        "Can't guess result name for specified type",
        "99 is no dataset type",
    ),
    (
        lambda m, s: m.add_node(1 << 40, "a"),
        moxwriter.InvalidArguments,
        ValueError,
        "Invalid arguments",
        "1099511627776 is no enumerator",
    ),
    (
        lambda m, s: m.add_node(NodeType.Group, "a", {"b": True}),
        moxwriter.InvalidArguments,
        ValueError,
        "Invalid arguments",
        'attribute "b" is a bool, which can\'t be stored',
    ),
    (
        lambda m, s: m.add_node(NodeType.Group, "a", {"b": [1]}),  # type: ignore[dict-item]
        moxwriter.InvalidArguments,
        ValueError,
        "Invalid arguments",
        'attribute "b" is of the type list, which can\'t be stored',
    ),
    (
        lambda m, s: m.add_node(NodeType.Group, "a", {"b": 1 << 64}),
        moxwriter.OverflowError,
        OverflowError,
        "Overflow error",
        'attribute "b": 18446744073709551616 has more than 64 bits',
    ),
    (
        lambda m, s: m.set_node_data(s, {PropertyType.Transparency: np.int32(1)}),
        moxwriter.TemplateSpecializationNotDefined,
        TypeError,
        "Template specialization not defined",
        "Transparency",
    ),
    (
        lambda m, s: m.set_node_data(9, {}),
        moxwriter.OutOfBounds,
        IndexError,
        "Out of bounds error",
        "no node has the id 9; the last one is 3",
    ),
    (
        lambda m, s: m.get_node_id("/R"),
        moxwriter.OutOfBounds,
        IndexError,
        "basic_string",
        "",
    ),
    (
        lambda m, s: m.add_assembly_components(["/other/a"]),
        moxwriter.NotYetImplemented,
        NotImplementedError,
        "Not yet implemented",
        "",
    ),
    (
        lambda m, s: m.save_to("other.mox"),
        moxwriter.InvalidObjectState,
        RuntimeError,
        "Not Empty",
        "",
    ),
    (
        lambda m, s: Model("/"),
        moxwriter.FileOpenException,
        FileExistsError,
        "File exists.",
        "",
    ),
    (
        lambda m, s: Model("/nowhere/a.mox"),
        moxwriter.MiscelleneousException,
        OSError,
        'Unable to open file "/nowhere/a.mox"',
        "No such file or directory",
    ),
    (
        lambda m, s: Model("a.mox", encoder=9),
        moxwriter.InvalidArguments,
        ValueError,
        "Invalid arguments",
        "",
    ),
    (
        lambda m, s: Model("a.mox", threads=1025),
        moxwriter.InvalidArguments,
        ValueError,
        "Invalid arguments",
        "",
    ),
    (
        lambda m, s: Model("a.mox", block_size=-1),
        moxwriter.InvalidArguments,
        ValueError,
        "Invalid arguments",
        "-1 is no size of blocks",
    ),
    (
        lambda m, s: Model("a\0b"),
        moxwriter.InvalidArguments,
        ValueError,
        "Invalid arguments",
        "the path 'a\\x00b' has a zero byte",
    ),
    (
        lambda m, s: m.add_node(NodeType.Group, "\ud800"),
        moxwriter.InvalidArguments,
        ValueError,
        "Invalid arguments",
        "'\\ud800' is no text",
    ),
]


@pytest.mark.parametrize("call, kind, also, text, detail", _FAILURES)
def test_failures_are_of_one_family(
    call: _Call, kind: Any, also: Any, text: str, detail: str, mox: str, tmp_path: Path
) -> None:
    model, shape = _open_model(tmp_path / "a.mox")
    with pytest.raises(kind) as failure:
        call(model, shape)
    assert isinstance(failure.value, moxwriter.Error) and isinstance(failure.value, also)
    assert failure.value.text.startswith(text)
    assert failure.value.detail.startswith(detail)
    assert str(failure.value).startswith(failure.value.text)
    assert str(failure.value).endswith(failure.value.detail)
    model.close()
    assert _is_sound(mox, tmp_path / "a.mox")


@pytest.mark.parametrize(
    "call",
    [
        lambda m, s: m.add_node(NodeType.Group, 5),
        lambda m, s: m.add_node("Group", "a"),
        lambda m, s: m.add_assembly_components("/R/a"),
        lambda m, s: m.add_array_property(DatasetType.NodeIds, np.array([1]), 1.5),
        lambda m, s: m.add_array_property(DatasetType.NodeIds, np.array([1]), s, 5),
        lambda m, s: m.add_array_property(DatasetType.NodeIds, np.array([1]), s, ("a", "b")),
        lambda m, s: m.set_node_data(s, {PropertyType.Shininess: None}),
        lambda m, s: m.get_node_id(5),
        lambda m, s: Model(5),
    ],
)
def test_arguments_of_a_wrong_type_raise_type_error(call: _Call, tmp_path: Path) -> None:
    model, shape = _open_model(tmp_path / "a.mox")
    with pytest.raises(TypeError):
        call(model, shape)


@pytest.mark.parametrize(
    "call",
    [
        lambda m: m.add_node(NodeType.Group, "a"),
        lambda m: m.set_node_data(1, {}),
        lambda m: m.get_node_id("/R/S"),
        lambda m: m.get_node_id(["R", "S"]),
        lambda m: m.set_current_node_id(1),
        lambda m: m.move_to_parent_node(),
        lambda m: m.add_assembly_components(["/R/a"]),
        lambda m: m.add_array_property(DatasetType.NodeIds, np.array([1]), 3),
    ],
)
def test_a_closed_model_refuses_all_calls(call: Callable[[Model], object], tmp_path: Path) -> None:
    model, _ = _open_model(tmp_path / "a.mox")
    model.close()
    for empty in (model, Model()):
        with pytest.raises(moxwriter.InvalidObjectState, match="^(File not open|Not initialized)"):
            call(empty)


def test_an_exception_closes_the_model_with_a_warning(mox: str, tmp_path: Path) -> None:
    path = tmp_path / "a.mox"
    with pytest.warns(moxwriter.UnfinishedModelWarning, match="a.mox .* closed .* may lack steps"):
        with pytest.raises(ZeroDivisionError):
            with Model(path) as model:
                model.add_node(NodeType.RootGroup, "R")
                1 / 0
    assert model.closed
    assert _is_sound(mox, path)


@pytest.mark.skipif(not os.path.exists("/dev/full"), reason="no /dev/full")
def test_a_full_disk_is_told_of_in_every_way_of_closing() -> None:
    with pytest.raises(moxwriter.FileWriteException) as failure:
        with Model("/dev/full", overwrite=True) as model:
            model.add_node(NodeType.RootGroup, "R")
    assert model.closed and isinstance(failure.value, OSError)
    model.close()
    with pytest.warns(moxwriter.UnfinishedModelWarning, match="given up .*Saving the buffer"):
        with pytest.raises(ZeroDivisionError):
            with Model("/dev/full", overwrite=True) as model:
                model.add_node(NodeType.RootGroup, "R")
                1 / 0


def _run(program: str, *arguments: object) -> subprocess.CompletedProcess[str]:
    command = [sys.executable, "-c", program, *map(str, arguments)]
    return subprocess.run(command, capture_output=True, text=True, check=True)


_FORGOTTEN = """
import sys, moxwriter
model = moxwriter.Model(sys.argv[1], overwrite=True)
model.add_node(moxwriter.NodeType.RootGroup, "R")
"""


@pytest.mark.parametrize("end", ["del model", "pass"])
def test_a_model_that_nobody_closes_is_closed(end: str, mox: str, tmp_path: Path) -> None:
    program = "import warnings; warnings.simplefilter('always')" + _FORGOTTEN + end
    answer = _run(program, tmp_path / "a.mox")
    assert "a.mox was not closed" in answer.stderr
    assert _is_sound(mox, tmp_path / "a.mox")


@pytest.mark.skipif(not os.path.exists("/dev/full"), reason="no /dev/full")
def test_a_failure_of_a_model_that_nobody_closes_is_printed() -> None:
    said = _run(_FORGOTTEN + "del model", "/dev/full").stderr
    assert "FileWriteException: Saving the buffer failed" in said


def test_other_threads_run_while_values_are_written(mox: str, tmp_path: Path) -> None:
    path = tmp_path / "a.mox"
    model, shape = _open_model(path)
    values = np.ones((1 << 20, 3), dtype=np.float32)
    stop = threading.Event()
    refusals: List[str] = []
    laps = 0

    def run() -> None:
        nonlocal laps
        while not stop.is_set():
            laps += 1
            try:
                model.get_node_id("/R/S")
            except moxwriter.InvalidObjectState as refusal:
                refusals.append(refusal.detail)
            time.sleep(0.0005)

    interval = sys.getswitchinterval()
    # Nothing but a call that releases the interpreter lets the other thread run.
    sys.setswitchinterval(60)
    other = threading.Thread(target=run)
    other.start()
    gc.disable()
    try:
        for _ in range(100):
            before = laps
            model.add_array_property(DatasetType.Displacement, values, shape)
            if laps > before and refusals:
                break
    finally:
        gc.enable()
        sys.setswitchinterval(interval)
        stop.set()
        other.join()
    assert laps > before
    assert set(refusals) == {"another thread is just writing into the model"}
    model.close()
    assert _is_sound(mox, path)


_LARGE = """
import os, resource, sys
os.environ["MOXWRITER_DEFAULT_BLOCK_SIZE"] = str(1 << 20)
import numpy as np, moxwriter
values = np.ones((3, 4 << 20)).T[::-1]
with moxwriter.Model("") as model:
    model.add_node(moxwriter.NodeType.RootGroup, "R")
    shape = model.add_node(moxwriter.NodeType.Shape, "S")
    before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
    model.add_array_property(moxwriter.DatasetType.Displacement, values, shape)
    print(resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before)
"""


def test_an_array_takes_no_more_than_its_block_and_what_compression_makes_of_it() -> None:
    # 96 MiB of doubles are a dataset of 48 MiB, which has a block of its own.
    assert int(_run(_LARGE).stdout) < 80 << 10


_LOSSES = """
import os, sys
os.environ["MOXWRITER_WARNINGS"] = sys.argv[1]
import numpy as np, moxwriter
with moxwriter.Model("") as model:
    root = model.add_node(moxwriter.NodeType.RootGroup, "R")
    model.add_node(moxwriter.NodeType.Shape, "S")
    model.add_array_property(moxwriter.DatasetType.NodeScalar, np.zeros(2), root, name="T")
"""


def test_who_runs_a_program_may_see_what_is_not_taken_as_it_is_given() -> None:
    assert _run(_LOSSES, 1).stderr == (
        'moxwriter: warning: Result10 "T" was given to node 1, which is no shape and does not get it\n'
    )
    assert _run(_LOSSES, 0).stderr == ""
