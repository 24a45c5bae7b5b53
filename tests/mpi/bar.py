"""The bar of WrittenPieces.h, by a program of many ranks in Python.

    bar.py faults                        tells the words below
    bar.py INDEX RANKS_PER_FILE          writes the pieces
    bar.py INDEX RANKS_PER_FILE FAULT    the same, but rank 1 is refused something after the mesh: "width",
                                         an array; "type", what doesn't even reach the library; "own", by
                                         itself; "block", by an exception; "options", already the model

Each rank prints the sentence that it is told in the end, if there is one.
"""

import sys

if len(sys.argv) == 2:
    print("width type own block options")
    sys.exit()

import numpy as np
from mpi4py import MPI

from moxwriter import DatasetType, NodeType, PropertyType, WritingError
from moxwriter.mpi import PartitionedModel

ELEMENTS = 64
STEPS = 3
RANK = MPI.COMM_WORLD.Get_rank()
RANKS = MPI.COMM_WORLD.Get_size()


def write(model: PartitionedModel, fault: str) -> None:
    nodes = ELEMENTS // RANKS * RANK + np.arange(ELEMENTS // RANKS + 1)
    model.add_node(NodeType.RootGroup, "Wave", {"Solver": "test"})
    group = model.add_node(NodeType.Group, "Parts")
    model.set_node_data(group, {PropertyType.Translation: [1, 2, 3]})
    bar = model.add_node(NodeType.Shape, "Bar")
    coordinates = np.zeros((len(nodes), 3))
    coordinates[:, 0] = 0.5 * nodes
    coordinates[:, 2] = 1
    rows = np.arange(len(nodes) - 1)
    model.add_array_property(DatasetType.Coordinates, coordinates, bar)
    model.add_array_property(DatasetType.NodeIds, nodes + 1, bar)
    model.add_array_property(
        DatasetType.Connectivity1, np.column_stack([rows, rows + 1]).ravel(), bar
    )
    model.add_array_property(DatasetType.Polylength1, np.full(len(rows), 2), bar)
    if fault == "width":
        model.add_array_property(DatasetType.Displacement, nodes, bar)
    if fault == "type":
        model.add_node(NodeType.Group, 5)  # type: ignore[arg-type]
    if fault == "own":
        model.fail("the solver does not converge")
    if fault == "block":
        raise ArithmeticError("the time step is 0")
    for number in range(1, STEPS + 1):
        displacement = np.zeros((len(nodes), 3))
        displacement[:, 1] = np.sin(0.1 * nodes + number)
        displacement[:, 2] = 1e-3 * nodes
        step = ("Step %d" % number, {"StepNumber": number, "Time": 0.5 * number})
        model.add_array_property(DatasetType.Displacement, displacement, bar, step)
        model.step()


def main() -> int:
    fault = sys.argv[3] if len(sys.argv) == 4 and RANK == 1 else ""
    try:
        threads = "many" if fault == "options" else 0
        with PartitionedModel(
            MPI.COMM_WORLD,
            sys.argv[1],
            ranks_per_file=int(sys.argv[2]),
            message_bytes=4096,
            overwrite=True,
            threads=threads,  # type: ignore[arg-type]
        ) as model:
            write(model, fault)
    except (WritingError, ArithmeticError, TypeError) as error:
        print(error)
        return 1
    return 0


sys.exit(main())
