"""Draws the figures of bench/results.json: bench/plot.py RESULTS PLOT"""

import json
import statistics
import sys

import matplotlib

matplotlib.use("svg")
# The same figures make the same file.
matplotlib.rcParams["svg.hashsalt"] = "moxwriter"
from matplotlib import pyplot  # noqa: E402

OURS, OTHERS, LIMITS = "#1f77b4", "#7f7f7f", "#c7c7c7"


def median(runs, value):
    return statistics.median(value(run) for run in runs)


def color(name):
    if name.startswith("moxwriter"):
        return OURS
    return LIMITS if name.startswith("bare") else OTHERS


def bars(axes, values, title, label):
    names = list(values)[::-1]
    drawn = axes.barh(names, [values[name] for name in names], color=[color(name) for name in names])
    axes.bar_label(drawn, fmt="%.3g", padding=3, fontsize=8)
    axes.set_title(title)
    axes.set_xlabel(label)
    axes.margins(x=0.15)


def draw_throughput(axes, subjects):
    shown = {name: runs for name, runs in subjects.items()
             if runs and name not in ("bare memcpy", "bare fwrite")}
    bars(axes, {name: median(runs, lambda run: run["bytes_in"] / run["seconds"] / 1e6)
                for name, runs in shown.items()},
         "Transient result: throughput", "MB/s of values, logarithmic")
    axes.set_xscale("log")


def draw_sizes(axes, subjects):
    bars(axes, {name: median(runs, lambda run: run["file_bytes"] / run["bytes_in"])
                for name, runs in subjects.items() if runs and not name.startswith("bare")},
         "Transient result: size of the file", "bytes in the file for each byte of values")


def draw_times(axes, workloads):
    """Times as parts of HDF5's, for the workloads of many small things."""
    names = {"b": ("small datasets", "", "HDF5"), "c": ("paths", ", groups 1x", "HDF5, groups 1x"),
             "d": ("small models", "", "HDF5")}
    ratios = {}
    for key, (title, detail, other) in names.items():
        if key not in workloads or other not in workloads[key]["subjects"]:
            continue
        subjects = workloads[key]["subjects"]
        for encoder in workloads[key]["encoders"]:
            pairs = zip(subjects[f"moxwriter {encoder}{detail}"], subjects[other])
            ratios[f"moxwriter {encoder}\n{title}"] = statistics.median(
                mine["seconds"] / theirs["seconds"] for mine, theirs in pairs)
    bars(axes, ratios, "Many small things: time", "time as a part of HDF5's")
    axes.axvline(1, color=OTHERS)


def main():
    figures, plot = sys.argv[1:]
    with open(figures, encoding="utf-8") as stream:
        workloads = json.load(stream)["workloads"]
    figure, axes = pyplot.subplots(1, 3, figsize=(15, 5), layout="constrained")
    if "a" in workloads:
        draw_throughput(axes[0], workloads["a"]["subjects"])
        draw_sizes(axes[1], workloads["a"]["subjects"])
    draw_times(axes[2], workloads)
    figure.savefig(plot, metadata={"Date": None})


if __name__ == "__main__":
    main()
