"""The build tree of what is measured."""

import os
import shutil
import subprocess
import sys
from dataclasses import dataclass, field
from pathlib import Path

PEERS = ("hdf5", "vtk", "exodus")
# The last revision whose library could have no threads, and had one encoder, zlib.
BEFORE_THREADS = "230e24f"


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
    before: Path = None
    """The program that drives the library as it was before there were threads."""


def run_cmake(root, tree):
    command = ["cmake", "-S", root, "-B", tree, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
               "-DMOXWRITER_BUILD_BENCH=ON", "-DMOXWRITER_BUILD_TESTS=OFF",
               "-DMOXWRITER_BUILD_TOOLS=OFF", "-DMOXWRITER_BUILD_EXAMPLES=OFF",
               "-DMOXWRITER_BUILD_PYTHON=OFF"]
    return subprocess.run(command, capture_output=True, text=True)


def configure(root, tree):
    done = run_cmake(root, tree)
    if done.returncode != 0:
        sys.exit(done.stderr)
    # What is not installed.
    print("".join(f"{line[3:]}\n" for line in done.stdout.splitlines() if line.startswith("-- No ")),
          end="")


def compile_all(tree, jobs, target="all"):
    command = ["cmake", "--build", tree, "--parallel", str(jobs or os.cpu_count()), "-t", target]
    done = subprocess.run(command, stdout=subprocess.PIPE, text=True)
    if done.returncode != 0:
        sys.exit(done.stdout)


def build_before(root, jobs):
    """With the flags of today; nothing where the clone does not reach so far back."""
    folder = root / "build" / "bench" / "before"
    program = folder / "tree" / "bench" / "bench_moxwriter"
    shutil.rmtree(folder / "source", ignore_errors=True)
    (folder / "source").mkdir(parents=True)
    archive = subprocess.run(["git", "archive", BEFORE_THREADS], cwd=root, capture_output=True)
    if archive.returncode != 0:
        print(f"Nothing is compared with revision {BEFORE_THREADS}, which this clone lacks",
              file=sys.stderr)
        return None
    subprocess.run(["tar", "-x", "-C", folder / "source"], input=archive.stdout, check=True)
    done = run_cmake(folder / "source", folder / "tree")
    if done.returncode != 0:
        sys.exit(done.stderr)
    compile_all(folder / "tree", jobs, "bench_moxwriter")
    return program


def words_of_usage(program):
    return subprocess.run([program], capture_output=True, text=True).stderr.split()


def found_encoders(tree):
    """Those that the library was built with, as its build tree tells."""
    cache = (tree / "CMakeCache.txt").read_text().splitlines()
    line = next(line for line in cache if line.startswith("MOXWRITER_ENCODERS:"))
    return line.partition("=")[2].split(", ")


def build(root, encoders, jobs, is_compared_with_before):
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
                       if name in words_of_usage(folder / "bench_limits")],
        before=build_before(root, jobs) if is_compared_with_before else None)
    if not programs.encoders:
        sys.exit("Nothing to measure")
    for encoder in encoders:
        if encoder not in programs.encoders:
            print(f"Leaving {encoder} out, the library is built without it", file=sys.stderr)
    return programs
