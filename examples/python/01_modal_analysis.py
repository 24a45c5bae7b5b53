"""The natural vibrations of a steel cantilever, computed with NumPy and written as a model.

    01_modal_analysis.py MODEL

Plane stress, elements of 8 nodes, lengths in m. The frequencies of bending are printed beside those of a
slender beam, which is a little stiffer.
"""

from __future__ import annotations

import sys
from typing import Tuple

import numpy as np
from numpy.typing import NDArray

import moxwriter
from moxwriter import DatasetType, NodeType, PropertyType

Floats = NDArray[np.float64]
Integers = NDArray[np.int64]

LENGTH, HEIGHT = 1.0, 0.1
COLUMNS, ROWS = 20, 2
YOUNGS_MODULUS, POISSONS_RATIO, DENSITY = 210e9, 0.3, 7850.0
MODES = 6

# Where the nodes of an element are: its corners around, then its mid-side nodes.
PLACES = np.array([(-1, -1), (1, -1), (1, 1), (-1, 1), (0, -1), (1, 0), (0, 1), (-1, 0)], float)


def mesh() -> Tuple[Floats, Integers]:
    """Coordinates of the nodes, and the rows in them of the nodes of each element."""
    # Twice as fine as the elements; the points in the middle of elements are no nodes.
    x, y = np.meshgrid(np.arange(2 * COLUMNS + 1), np.arange(2 * ROWS + 1), indexing="ij")
    is_node = (x % 2 == 0) | (y % 2 == 0)
    numbers = np.full(x.shape, -1)
    numbers[is_node] = np.arange(is_node.sum())
    size = np.array([LENGTH / (2 * COLUMNS), HEIGHT / (2 * ROWS), 0.0])
    coordinates = np.stack([x[is_node], y[is_node], 0 * x[is_node]], axis=1) * size
    offsets = PLACES.astype(int) + 1
    elements = [
        numbers[2 * column + offsets[:, 0], 2 * row + offsets[:, 1]]
        for column in range(COLUMNS)
        for row in range(ROWS)
    ]
    return coordinates, np.array(elements)


def shape_functions(x: float, y: float) -> Tuple[Floats, Floats]:
    """Of the 8 nodes at a point of -1..1, and their derivatives (2 x 8)."""
    px, py = PLACES.T
    is_corner = px * py != 0
    bx, by = np.where(px == 0, 1 - x * x, 1 + px * x), np.where(py == 0, 1 - y * y, 1 + py * y)
    dx, dy = np.where(px == 0, -2 * x, px), np.where(py == 0, -2 * y, py)
    value, along_x, along_y = bx * by / 2, dx * by / 2, bx * dy / 2
    corner = (px * x + py * y - 1) / 2
    return (
        np.where(is_corner, value * corner, value),
        np.stack(
            [
                np.where(is_corner, along_x * corner + value * px / 2, along_x),
                np.where(is_corner, along_y * corner + value * py / 2, along_y),
            ]
        ),
    )


def element_matrices() -> Tuple[Floats, Floats]:
    """Stiffness and mass (16 x 16) of an element of unit thickness; all elements are alike."""
    elasticity = np.array(
        [[1, POISSONS_RATIO, 0], [POISSONS_RATIO, 1, 0], [0, 0, (1 - POISSONS_RATIO) / 2]]
    ) * (YOUNGS_MODULUS / (1 - POISSONS_RATIO**2))
    half = np.array([LENGTH / (2 * COLUMNS), HEIGHT / (2 * ROWS)])
    stiffness, mass = np.zeros((16, 16)), np.zeros((16, 16))
    # Gauss's rule, which is exact for both.
    points, weights = (-(0.6**0.5), 0.0, 0.6**0.5), (5 / 9, 8 / 9, 5 / 9)
    for x, wx in zip(points, weights):
        for y, wy in zip(points, weights):
            value, slope = shape_functions(x, y)
            along_x, along_y = slope / half[:, np.newaxis]
            strain, motion = np.zeros((3, 16)), np.zeros((2, 16))
            strain[0, 0::2] = strain[2, 1::2] = along_x
            strain[1, 1::2] = strain[2, 0::2] = along_y
            motion[0, 0::2] = motion[1, 1::2] = value
            area = wx * wy * half.prod()
            stiffness += strain.T @ elasticity @ strain * area
            mass += motion.T @ motion * DENSITY * area
    return stiffness, mass


def vibrations(coordinates: Floats, elements: Integers) -> Tuple[Floats, Floats, Floats]:
    """Frequencies, displacements (modes x nodes x 3) and strain energies (modes x elements)."""
    stiffness, mass = element_matrices()
    freedoms = np.stack([2 * elements, 2 * elements + 1], axis=2).reshape(len(elements), 16)
    count = 2 * len(coordinates)
    whole = np.zeros((2, count, count))
    for of_element in freedoms:
        whole[:, of_element[:, np.newaxis], of_element] += stiffness, mass
    # The left end is fixed.
    free = np.repeat(coordinates[:, 0] > 0, 2).nonzero()[0]
    k, m = whole[:, free[:, np.newaxis], free]
    # K u = w^2 M u with M = L L', as an eigenvalue problem of a symmetric matrix.
    inverse = np.linalg.inv(np.linalg.cholesky(m))
    squares, vectors = np.linalg.eigh(inverse @ k @ inverse.T)
    motions = np.zeros((MODES, count))
    motions[:, free] = (inverse.T @ vectors[:, :MODES]).T
    motions /= np.abs(motions).max(axis=1, keepdims=True)
    energies = 0.5 * np.einsum(
        "mei,ij,mej->me", motions[:, freedoms], stiffness, motions[:, freedoms]
    )
    displacements = np.zeros((MODES, len(coordinates), 3))
    displacements[:, :, :2] = motions.reshape(MODES, -1, 2)
    return np.sqrt(squares[:MODES]) / (2 * np.pi), displacements, energies


def write(path: str, coordinates: Floats, elements: Integers, results: Tuple[Floats, ...]) -> None:
    with moxwriter.Model(path, overwrite=True, text1="01_modal_analysis") as model:
        model.add_node(NodeType.RootGroup, "Cantilever", {"Material": "Steel"})
        beam = model.add_node(NodeType.Shape, "Beam")
        model.set_node_data(beam, {PropertyType.DiffuseColor: (0.6, 0.65, 0.7)})
        model.add_array_property(DatasetType.Coordinates, coordinates, beam)
        model.add_array_property(DatasetType.NodeIds, np.arange(len(coordinates)) + 1, beam)
        model.add_array_property(DatasetType.Connectivity2, elements.ravel(), beam)
        model.add_array_property(DatasetType.Polylength2, np.full(len(elements), 8), beam)
        model.add_array_property(DatasetType.ElementIds, np.arange(len(elements)) + 1, beam)
        for number, (frequency, displacement, energy) in enumerate(zip(*results), 1):
            # The category marks what vibrates for readers that move it.
            attributes = {"Mode": number, "Frequency": frequency, "Category": "Vibration"}
            step = ("Mode %d" % number, attributes)
            model.add_array_property(DatasetType.Displacement, displacement, beam, step)
            model.add_array_property(
                DatasetType.Result14, energy, beam, step, {"Unit": "J/m"}, name="Strain energy"
            )


def main() -> None:
    coordinates, elements = mesh()
    results = vibrations(coordinates, elements)
    write(sys.argv[1], coordinates, elements, results)
    slender = np.sqrt(YOUNGS_MODULUS * HEIGHT**2 / (12 * DENSITY)) / (2 * np.pi * LENGTH**2)
    print("mode 1: %.2f Hz, as a slender beam %.2f Hz" % (results[0][0], 1.875104**2 * slender))
    print("mode 2: %.2f Hz, as a slender beam %.2f Hz" % (results[0][1], 4.694091**2 * slender))
    bar = np.sqrt(YOUNGS_MODULUS / DENSITY) / (4 * LENGTH)
    print("mode 3: %.2f Hz, as a bar along its axis %.2f Hz" % (results[0][2], bar))


if __name__ == "__main__":
    main()
