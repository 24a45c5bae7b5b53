"""One build tree for each encoder of the library."""

import os
import subprocess
import sys
from dataclasses import dataclass, field
from pathlib import Path

PEERS = ("hdf5", "vtk", "exodus")


@dataclass
class Programs:
    """The programs that could be built."""

    encoders: dict = field(default_factory=dict)
    """The program that drives moxwriter, by encoder."""
    peers: dict = field(default_factory=dict)
    limits: Path = None
    shuffle: Path = None
    bare_encoders: list = field(default_factory=list)


def configure(root, tree, encoder, missing):
    command = ["cmake", "-S", root, "-B", tree, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
               "-DMOXWRITER_BUILD_BENCH=ON", "-DMOXWRITER_BUILD_TESTS=OFF",
               "-DMOXWRITER_BUILD_TOOLS=OFF", "-DMOXWRITER_BUILD_EXAMPLES=OFF",
               f"-DMOXWRITER_DEFLATE={encoder}"]
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode != 0:
        print(f"Leaving {encoder} out, it can't be configured:\n{done.stderr}", file=sys.stderr)
        return False
    # What is not installed shows in the same way for every encoder.
    missing.update(line[3:] for line in done.stdout.splitlines() if line.startswith("-- No "))
    return True


def compile_targets(tree, targets, jobs):
    command = ["cmake", "--build", tree, "--parallel", str(jobs or os.cpu_count())]
    if targets:
        command += ["--target", *targets]
    done = subprocess.run(command, stdout=subprocess.PIPE, text=True)
    if done.returncode != 0:
        sys.exit(done.stdout)


def add_common_programs(programs, folder):
    """What does not depend on the encoder, from the first tree that there is."""
    programs.limits = folder / "bench_limits"
    programs.shuffle = folder / "bench_shuffle"
    programs.peers = {peer: folder / f"bench_{peer}" for peer in PEERS
                      if (folder / f"bench_{peer}").exists()}
    usage = subprocess.run([programs.limits], capture_output=True, text=True).stderr.split()
    programs.bare_encoders = [name for name in ("zlib", "libdeflate", "isal") if name in usage]


def build(root, encoders, jobs):
    programs = Programs()
    missing = set()
    for encoder in encoders:
        tree = root / "build" / "bench" / encoder
        print(f"Building with {encoder}", flush=True)
        if not configure(root, tree, encoder, missing):
            continue
        first = not programs.encoders
        compile_targets(tree, [] if first else ["bench_moxwriter"], jobs)
        if first:
            add_common_programs(programs, tree / "bench")
        programs.encoders[encoder] = tree / "bench" / "bench_moxwriter"
    print("".join(f"{line}\n" for line in sorted(missing)), end="")
    if not programs.encoders:
        sys.exit("Nothing to measure")
    return programs
