"""The smallest useful model: a group, one shape with a line element, and a displacement; written and read.

    04_first_model.py MODEL
"""

from __future__ import annotations

import sys

import numpy as np

import moxwriter
from moxwriter import DatasetType, NodeType, PropertyType

path = sys.argv[1] if len(sys.argv) > 1 else "beam.mox"
points = np.array([[0.0, 0.0, 0.0], [1.0, 0.0, 0.0]])

with moxwriter.Model(path, overwrite=True) as model:
    model.add_node(NodeType.RootGroup, "Beam", {"Author": "me"})
    steel = model.add_node(NodeType.Shape, "Steel")
    model.set_node_data(steel, {PropertyType.DiffuseColor: (0.8, 0.1, 0.1)})
    model.add_array_property(DatasetType.Coordinates, points, steel)
    model.add_array_property(DatasetType.Connectivity1, np.array([0, 1]), steel)
    model.add_array_property(DatasetType.Polylength1, np.array([2]), steel)
    model.add_array_property(DatasetType.NodeIds, np.array([101, 102]), steel)
    model.add_array_property(DatasetType.Displacement, points * 0.1, steel, ("Load 1", {"Time": 1.0}))

with moxwriter.open(path) as file:
    shape = file["Beam/Steel"]
    displacement = shape["Displacement", "Load 1"]  # rows x 3 floats
    ids = shape["Node Ids"]  # of no step
    for name, step in file.steps.items():
        print(name, step.attributes.get("Time"), ids[displacement[:, 0] > 0])
