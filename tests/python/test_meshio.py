"""Meshes and results for meshio."""

from __future__ import annotations

import os
import re
import subprocess
import warnings
from pathlib import Path
from typing import Any, Dict, List, Tuple

import build
import numpy as np
import pytest

import moxwriter

meshio = pytest.importorskip("meshio")

_TRIANGLE = [(0, 0, 0), (1, 0, 0), (0, 1, 0)]
_QUADRANGLE = [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0)]
_WEDGE = _TRIANGLE + [(x, y, 1) for x, y, _ in _TRIANGLE]
_HEXAHEDRON = _QUADRANGLE + [(x, y, 1) for x, y, _ in _QUADRANGLE]
_TETRAHEDRON = _TRIANGLE + [(0, 0, 1)]
_PYRAMID = _QUADRANGLE + [(0.5, 0.5, 1)]

# A model's nodes behind the corners: each in the middle of these corners, counted from 1.
_MODEL_MIDDLES = {
    "triangle6": "12 23 31",
    "quad8": "12 23 34 41",
    "tetra10": "12 23 31 14 24 34",
    "pyramid13": "12 23 34 41 15 25 35 45",
    "wedge15": "12 23 31 45 56 64 14 25 36",
    "wedge18": "12 23 31 45 56 64 14 25 36 1254 2365 3146",
    "hexahedron20": "12 23 34 41 56 67 78 85 15 26 37 48",
    "hexahedron27": "12 23 34 41 56 67 78 85 15 26 37 48 1584 2376 1265 4873 1234 5678 12345678",
}
# VTK's, as its documentation has them, counted from 0.
_VTK_MIDDLES = {
    "triangle6": "01 12 20",
    "quad8": "01 12 23 30",
    "tetra10": "01 12 20 03 13 23",
    "pyramid13": "01 12 23 30 04 14 24 34",
    "wedge15": "01 12 20 34 45 53 03 14 25",
    "wedge18": "01 12 20 34 45 53 03 14 25 0143 1254 2035",
    "hexahedron20": "01 12 23 30 45 56 67 74 04 15 26 37",
    "hexahedron27": "01 12 23 30 45 56 67 74 04 15 26 37 0473 1265 0154 3267 0123 4567 01234567",
}
_CORNERS = {
    "triangle": (2, _TRIANGLE),
    "triangle6": (2, _TRIANGLE),
    "quad": (2, _QUADRANGLE),
    "quad8": (2, _QUADRANGLE),
    "tetra": (3, _TETRAHEDRON),
    "tetra10": (3, _TETRAHEDRON),
    "pyramid": (3, _PYRAMID),
    "pyramid13": (3, _PYRAMID),
    "wedge": (3, _WEDGE),
    "wedge15": (3, _WEDGE),
    "wedge18": (3, _WEDGE),
    "hexahedron": (3, _HEXAHEDRON),
    "hexahedron20": (3, _HEXAHEDRON),
    "hexahedron27": (3, _HEXAHEDRON),
}


def _opened(tmp_path: Path, model: build.Builder) -> moxwriter.File:
    path = tmp_path / "model.mox"
    path.write_bytes(model.file())
    return moxwriter.open(path)


def _middles(corners: np.ndarray, places: str, first: int) -> np.ndarray:
    return np.array(
        [corners[[int(c) - first for c in place]].mean(axis=0) for place in places.split()]
    )


def _element(name: str) -> Tuple[int, np.ndarray]:
    """Dimension, and the nodes of one element in a model's order."""
    dimension, corners = _CORNERS[name]
    points = np.array(corners, float)
    if name in _MODEL_MIDDLES:
        points = np.concatenate([points, _middles(points, _MODEL_MIDDLES[name], 1)])
    return dimension, points


def _model_of(name: str) -> build.Builder:
    dimension, points = _element(name)
    model = build.Builder()
    shape = model.shape("S")
    model.dataset(shape, "Coordinates", 1, points)
    model.dataset(shape, "Connectivity", 3 + dimension, np.arange(len(points)))
    model.dataset(shape, "Polylength", 9, [len(points)])
    return model


def _first_triangle_points_away(points: np.ndarray) -> bool:
    """Whether the normal of the first three points points away from the fourth."""
    normal = np.cross(points[1] - points[0], points[2] - points[0])
    return bool(normal @ (points[3] - points[0]) < 0)


@pytest.mark.parametrize("name", sorted(_CORNERS))
def test_elements_keep_their_form(tmp_path: Path, name: str) -> None:
    with _opened(tmp_path, _model_of(name)) as file:
        mesh = moxwriter.to_meshio(file["Root/S"])
    assert [block.type for block in mesh.cells] == [name]
    points = mesh.points[mesh.cells[0].data[0]]
    assert sorted(mesh.cells[0].data[0]) == list(range(len(points)))
    if name in _VTK_MIDDLES:
        corner_count = len(_CORNERS[name][1])
        expected = _middles(points[:corner_count], _VTK_MIDDLES[name], 0)
        np.testing.assert_allclose(points[corner_count:], expected, atol=1e-6)
    if name.startswith(("tetra", "hexahedron", "pyramid")):
        assert not _first_triangle_points_away(
            points[[0, 1, 2, -1 if len(points) == 5 else 4 if len(points) > 10 else 3]]
        )


@pytest.mark.parametrize("name", ["wedge", "wedge15", "wedge18"])
def test_wedges_in_a_file_of_vtk_are_as_vtk_defines_them(tmp_path: Path, name: str) -> None:
    """Its base, seen from outside, is counter-clockwise."""
    with _opened(tmp_path, _model_of(name)) as file:
        mesh = moxwriter.to_meshio(file["Root/S"])
    meshio.vtk.write(str(tmp_path / "wedge.vtk"), mesh, binary=False)
    text = (tmp_path / "wedge.vtk").read_text()
    nodes = [
        int(word) for word in re.split(r"CONNECTIVITY \S+", text)[1].split("CELL_TYPES")[0].split()
    ]
    assert _first_triangle_points_away(_element(name)[1][nodes])


def test_elements_are_sorted_by_type_and_their_results_with_them(tmp_path: Path) -> None:
    model = build.Builder()
    shape = model.shape("S")
    model.dataset(shape, "Coordinates", 1, np.arange(15.0).reshape(5, 3))
    model.dataset(shape, "Connectivity", 5, [0, 1, 2, 3, 1, 2, 4, 4, 3, 2, 1])
    model.dataset(shape, "Polylength", 9, [4, 3, 4])
    model.dataset(shape, "Element IDs", 16, [10, 20, 30])
    model.dataset(shape, "T", 12, np.arange(5.0))
    model.dataset(shape, "T", 12, np.arange(5.0) + 1, "Step 1")
    model.dataset(shape, "E", 16, np.arange(3.0), "Step 1")
    with _opened(tmp_path, model) as file:
        mesh = moxwriter.to_meshio(file["Root/S"], "Step 1")
        with pytest.raises(moxwriter.MissingKeyError):
            moxwriter.to_meshio(file["Root/S"], "Step 2")
    assert [(block.type, block.data.tolist()) for block in mesh.cells] == [
        ("triangle", [[1, 2, 4]]),
        ("quad", [[0, 1, 2, 3], [4, 3, 2, 1]]),
    ]
    assert [values.tolist() for values in mesh.cell_data["Element IDs"]] == [[20], [10, 30]]
    assert [values.tolist() for values in mesh.cell_data["E"]] == [[1], [0, 2]]
    assert mesh.point_data["T"].tolist() == [1, 2, 3, 4, 5]


def test_what_has_no_place_is_told(tmp_path: Path) -> None:
    model = build.Builder()
    shape = model.shape("S")
    model.dataset(shape, "Coordinates", 1, np.arange(6.0).reshape(2, 3))
    model.dataset(shape, "Short", 12, [1.0])
    with _opened(tmp_path, model) as file, pytest.warns(UserWarning, match="Short"):
        mesh = moxwriter.to_meshio(file["Root/S"])
    assert [(block.type, block.data.tolist()) for block in mesh.cells] == [("vertex", [[0], [1]])]


@pytest.mark.parametrize(
    "connectivity, lengths",
    [
        ([0, 1, 2], [4]),
        ([0, 1, 5], [3]),
        ([0.0, 1.0, 2.0], [3]),
        ([0, 1, 2, 0, 1], [5]),
        ([0, 1, 2], [3, 0]),
    ],
)
def test_what_is_no_mesh_is_refused(tmp_path: Path, connectivity: Any, lengths: Any) -> None:
    model = build.Builder()
    shape = model.shape("S")
    model.dataset(shape, "Coordinates", 1, np.arange(9.0).reshape(3, 3))
    model.dataset(shape, "Connectivity", 5, connectivity)
    model.dataset(shape, "Polylength", 9, lengths)
    with _opened(tmp_path, model) as file, pytest.raises(moxwriter.MeshError):
        moxwriter.to_meshio(file["Root/S"])
    with _opened(tmp_path, build.Builder()) as file, pytest.raises(moxwriter.MeshError):
        moxwriter.to_meshio(file.root)


def test_solver_results_become_meshes(translated: List[Path]) -> None:
    types: Dict[str, int] = {}
    for model in translated:
        with moxwriter.open(model) as file, warnings.catch_warnings():
            warnings.simplefilter("error")
            for node in file.values():
                for step in node.steps:
                    for block in moxwriter.to_meshio(node, step).cells:
                        types[block.type] = types.get(block.type, 0) + len(block.data)
    assert {"hexahedron20", "tetra10", "wedge", "wedge15", "quad8", "line"} <= set(types), types


@pytest.mark.skipif("MOX_READS_EXODUS" not in os.environ, reason="mox was built without Exodus")
def test_exodus_files_of_meshio_are_translated(mox: str, tmp_path: Path) -> None:
    pytest.importorskip("netCDF4")
    points = np.array(_HEXAHEDRON + [(0, 0, 2)], float)
    blocks = [("hexahedron", np.arange(8)[None]), ("tetra", np.array([[4, 5, 7, 8]]))]
    temperature = np.arange(9) / 8
    velocity = np.arange(27.0).reshape(9, 3)
    results = {"T": temperature, "velocity": velocity}
    meshio.write(tmp_path / "in.e", meshio.Mesh(points, blocks, results), "exodus")
    model = tmp_path / "out.mox"
    for command in (["translate", str(tmp_path / "in.e"), str(model)], ["check", str(model)]):
        answer = subprocess.run([mox, *command], capture_output=True, text=True)
        assert (answer.returncode, answer.stderr) == (0, "")
    with moxwriter.open(model) as file:
        shapes = [node for node in file.nodes() if node.kind == "shape"]
        (step,) = file.steps
        assert len(shapes) == len(blocks)
        for shape, (_, cells) in zip(shapes, blocks):
            rows = shape["Node Ids"].reshape(-1) - 1
            assert rows[shape["Connectivity"].reshape(-1)].tolist() == cells[0].tolist()
            np.testing.assert_array_equal(shape["Coordinates"], points[rows])
            np.testing.assert_array_equal(shape["T", step].reshape(-1), temperature[rows])
            np.testing.assert_array_equal(shape["velocity", step], velocity[rows])
