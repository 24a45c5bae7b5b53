"""Writes and reads a model with the package that is installed below a folder.

    write_and_read.py FOLDER MODEL
"""

from __future__ import annotations

import sys
from pathlib import Path

import numpy as np

import moxwriter
from moxwriter import DatasetType, NodeType

folder, path = sys.argv[1:]
assert moxwriter.__file__ is not None and Path(folder) in Path(moxwriter.__file__).parents
values = np.arange(6.0).reshape(2, 3)
with moxwriter.Model(path) as model:
    model.add_node(NodeType.RootGroup, "Beam")
    shape = model.add_node(NodeType.Shape, "Steel")
    model.add_array_property(DatasetType.Coordinates, values, shape)
with moxwriter.open(path) as file:
    assert (file["Beam/Steel"]["Coordinates"] == values).all()
print("moxwriter", moxwriter.version())
