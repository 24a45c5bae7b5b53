"""The build tree of what is measured."""

import os
import subprocess
import sys
from dataclasses import dataclass, field
from pathlib import Path

PEERS = ("hdf5", "vtk", "exodus")


@dataclass
class Programs:
    """The programs that could be built."""

    moxwriter: Path = None
    """The program that drives moxwriter."""
    encoders: list = field(default_factory=list)
    """The encoders that it can be run with."""
    peers: dict = field(default_factory=dict)
    read: Path = None
    limits: Path = None
    shuffle: Path = None
    bare_encoders: list = field(default_factory=list)


def configure(root, tree):
    command = ["cmake", "-S", root, "-B", tree, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
               "-DMOXWRITER_BUILD_BENCH=ON", "-DMOXWRITER_BUILD_TESTS=OFF",
               "-DMOXWRITER_BUILD_TOOLS=OFF", "-DMOXWRITER_BUILD_EXAMPLES=OFF",
               "-DMOXWRITER_BUILD_PYTHON=OFF"]
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(done.stderr)
    # What is not installed.
    print("".join(f"{line[3:]}\n" for line in done.stdout.splitlines() if line.startswith("-- No ")),
          end="")


def compile_all(tree, jobs):
    command = ["cmake", "--build", tree, "--parallel", str(jobs or os.cpu_count())]
    done = subprocess.run(command, stdout=subprocess.PIPE, text=True)
    if done.returncode != 0:
        sys.exit(done.stdout)


def words_of_usage(program):
    return subprocess.run([program], capture_output=True, text=True).stderr.split()


def found_encoders(tree):
    """Those that the library was built with, as its build tree tells."""
    cache = (tree / "CMakeCache.txt").read_text().splitlines()
    line = next(line for line in cache if line.startswith("MOXWRITER_ENCODERS:"))
    return line.partition("=")[2].split(", ")


def build(root, encoders, jobs):
    tree = root / "build" / "bench" / "release"
    print("Building", flush=True)
    configure(root, tree)
    compile_all(tree, jobs)
    folder = tree / "bench"
    programs = Programs(
        moxwriter=folder / "bench_moxwriter",
        encoders=[encoder for encoder in encoders if encoder in found_encoders(tree)],
        peers={peer: folder / f"bench_{peer}" for peer in PEERS
               if (folder / f"bench_{peer}").exists()},
        read=folder / "bench_read",
        limits=folder / "bench_limits",
        shuffle=folder / "bench_shuffle",
        bare_encoders=[name for name in ("zlib", "libdeflate", "isal")
                       if name in words_of_usage(folder / "bench_limits")])
    if not programs.encoders:
        sys.exit("Nothing to measure")
    for encoder in encoders:
        if encoder not in programs.encoders:
            print(f"Leaving {encoder} out, the library is built without it", file=sys.stderr)
    return programs
