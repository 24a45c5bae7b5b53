"""The host that the start page shows.

    03_two_parts.py MODEL

Two parts side by side in a group that is moved, a block of hexahedra and a cap of tetrahedra, with
displacements of nodes and stresses of elements in three steps, a material and a set of nodes.
07_two_parts.cpp writes the same.
"""

from __future__ import annotations

import sys
from typing import Any

import numpy as np
from numpy.typing import NDArray

import moxwriter
from moxwriter import DatasetType, NodeType, PropertyType

# A square on each of three levels.
BLOCK_NODES = np.array(
    [(x, y, z) for z in range(3) for x, y in [(0, 0), (1, 0), (1, 1), (0, 1)]], float
)
HEXAHEDRA = np.array([[0, 1, 2, 3, 4, 5, 6, 7], [4, 5, 6, 7, 8, 9, 10, 11]])
CAP_NODES = np.array([[0, 0, 2], [1, 0, 2], [1, 1, 2], [0, 1, 2], [0.5, 0.5, 3]])
TETRAHEDRA = np.array([[0, 1, 2, 4], [0, 2, 3, 4]])


def add_shape(model: moxwriter.Model, group: int, name: str) -> int:
    """A node goes below the current one, which is the one that was added last: shapes that are to
    stand beside each other make their group current first."""
    model.set_current_node_id(group)
    return model.add_node(NodeType.Shape, name)


def add_mesh(
    model: moxwriter.Model, shape: int, nodes: NDArray[Any], elements: NDArray[Any]
) -> None:
    model.add_array_property(DatasetType.Coordinates, nodes, shape)
    # Connectivity3 is that of solids: rows of the coordinates, counted from 0.
    model.add_array_property(DatasetType.Connectivity3, elements.ravel(), shape)
    lengths = np.full(len(elements), elements.shape[1])
    model.add_array_property(DatasetType.Polylength3, lengths, shape)


def add_results(
    model: moxwriter.Model, shape: int, nodes: NDArray[Any], elements: NDArray[Any]
) -> None:
    """What a solver would compute: the parts sink, and are pressed together."""
    for number in range(1, 4):
        step = ("Step %d" % number, {"StepNumber": number, "Time": 0.5 * number})
        displacement = np.zeros((len(nodes), 3))
        displacement[:, 2] = -0.01 * number * nodes[:, 2]
        model.add_array_property(DatasetType.Displacement, displacement, shape, step)
        # xx, yy, zz, xy, yz, zx of each element.
        stress = np.zeros((len(elements), 6))
        stress[:, 2] = -2.5 * number
        model.add_array_property(DatasetType.ElementTensor, stress, shape, step, name="Stress")


def add_block(model: moxwriter.Model, group: int) -> None:
    block = add_shape(model, group, "Block")
    add_mesh(model, block, BLOCK_NODES, HEXAHEDRA)
    add_results(model, block, BLOCK_NODES, HEXAHEDRA)
    # A set is 1 for the nodes that are in it, and 0 for the others.
    clamped = (BLOCK_NODES[:, 2] == 0).astype(np.int32)
    model.add_array_property(
        DatasetType.NodeScalar,
        clamped,
        block,
        attributes={"Category": "NodeSet"},
        name="Node Set Clamped",
    )


def add_cap(model: moxwriter.Model, group: int) -> None:
    cap = add_shape(model, group, "Cap")
    add_mesh(model, cap, CAP_NODES, TETRAHEDRA)
    add_results(model, cap, CAP_NODES, TETRAHEDRA)
    model.set_node_data(
        cap, {PropertyType.DiffuseColor: (0.8, 0.1, 0.1), PropertyType.Transparency: 0.25}
    )


def main() -> None:
    path = sys.argv[1] if len(sys.argv) > 1 else "two_parts.mox"
    with moxwriter.Model(path, overwrite=True) as model:
        model.add_node(NodeType.RootGroup, "Two parts")
        group = model.add_node(NodeType.Group, "Moved")
        # The rotation is an axis and radians.
        transform = {PropertyType.Translation: (2, 0, 0), PropertyType.Rotation: (0, 0, 1, 0.5)}
        model.set_node_data(group, transform)
        add_block(model, group)
        add_cap(model, group)


if __name__ == "__main__":
    main()
