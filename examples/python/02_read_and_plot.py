"""Reads a model and plots how a node moves over time.

    02_read_and_plot.py MODEL PICTURE.svg

The model that the example 03_transient writes, a string that swings, is one that fits.
"""

from __future__ import annotations

import sys
from typing import List, Tuple

import numpy as np
import pygal  # type: ignore[import]
from pygal.style import CleanStyle  # type: ignore[import]

import moxwriter


def shape_that_moves(file: moxwriter.File) -> moxwriter.Node:
    """The first shape with displacements."""
    for node in file.values():
        if any(dataset.name == "Displacement" for dataset in node.datasets):
            return node
    raise SystemExit("No shape of the model moves.")


def times_of(file: moxwriter.File, node: moxwriter.Node) -> List[Tuple[float, str]]:
    """The steps of displacements that have a time, in its order. Modes have none."""
    result = []
    for step in node.steps:
        time = file.steps[step].attributes.get("Time")
        if isinstance(time, (int, float)) and ("Displacement", step) in node:
            result.append((float(time), step))
    return sorted(result)


def main() -> None:
    model, picture = sys.argv[1:]
    with moxwriter.open(model) as file:
        node = shape_that_moves(file)
        steps = times_of(file, node)
        # One step is in memory at a time, whatever the size of the model.
        largest = [np.linalg.norm(node["Displacement", step], axis=1).argmax() for _, step in steps]
        watched = int(np.bincount(largest).argmax())
        curve = np.array([node["Displacement", step][watched] for _, step in steps])
        place = node["Coordinates"][watched]

    times = [time for time, _ in steps]
    # The picture stands alone: it loads no script when it is opened.
    chart = pygal.XY(
        js=(), style=CleanStyle, width=700, height=400, dots_size=2, legend_at_bottom=True,
        title="%s: node at (%g, %g, %g)" % (node.name, *place), x_title="Time", y_title="Displacement"
    )
    # Dashed lines leave those below them to be seen.
    for component, (name, dashes) in enumerate([("x", "none"), ("y", "8, 6"), ("z", "none")]):
        values = curve[:, component].tolist()
        chart.add(name, list(zip(times, values)), stroke_style={"dasharray": dashes})
    chart.render_to_file(picture)
    print("%s: %d steps, largest displacement %g" % (picture, len(steps), np.abs(curve).max()))


if __name__ == "__main__":
    main()
