"""Builds, measures and reports: what bench/mpi does once its packages are there."""

import argparse
import json
import os
import re
import shlex
import shutil
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "bench" / "suite"))

import machine  # noqa: E402  It is found where the suite is.

RANKS = (1, 2, 4, 8)
# Rows of a rank's nodes and elements make whole chunks.
SIZES = {"edge": 64, "steps": 8}
QUICK_SIZES = {"edge": 16, "steps": 2}
# Steps of almost nothing, which take what the ranks have to say to each other.
EMPTY_SIZES = {"edge": 2, "steps": 500}
BEGIN, END = "<!-- bench/mpi begins -->", "<!-- bench/mpi ends -->"
FILES, ONE, THREADS, HDF5 = ("moxwriter, a file for each rank", "moxwriter, one file",
                             "moxwriter, one file, 2 threads", "HDF5, one file")
# More ranks than there are cores, as root, and on one machine alone.
MPIRUN = ("mpirun", "--allow-run-as-root", "--oversubscribe", "--mca", "btl", "self,vader",
          "--mca", "btl_vader_single_copy_mechanism", "none")


def parse_options():
    parser = argparse.ArgumentParser(
        prog="bench/mpi",
        description="Measures partitioned models next to parallel HDF5. A whole run writes "
        "bench/ranks/results.json and the table of docs/performance.md; with --quick the same files "
        "go to build/bench/try.")
    parser.add_argument("--quick", action="store_true", help="small sizes, to try it")
    parser.add_argument("--repetitions", type=int, metavar="N",
                        help="rounds in which all take their turns (3; 1 with --quick)")
    parser.add_argument("--output", type=Path, metavar="DIR",
                        help="folder to write to (/dev/shm if it has 4 GB, else TMPDIR)")
    parser.add_argument("--jobs", type=int, metavar="N", help="compilers at a time")
    parser.add_argument("--no-install", action="store_true", help="take the packages that are there")
    options = parser.parse_args()
    if options.repetitions is None:
        options.repetitions = 1 if options.quick else 3
    in_memory = Path("/dev/shm")
    if options.output is None and os.access(in_memory, os.W_OK) \
            and shutil.disk_usage(in_memory).free > 4 << 30:
        options.output = in_memory
    return options


def build(jobs):
    tree = ROOT / "build" / "bench" / "mpi"
    print("Building", flush=True)
    configure = ["cmake", "-S", ROOT, "-B", tree, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                 "-DMOXWRITER_BUILD_BENCH=ON", "-DMOXWRITER_WITH_MPI=ON",
                 "-DMOXWRITER_BUILD_TESTS=OFF", "-DMOXWRITER_BUILD_TOOLS=OFF",
                 "-DMOXWRITER_BUILD_EXAMPLES=OFF", "-DMOXWRITER_BUILD_PYTHON=OFF"]
    compile_all = ["cmake", "--build", tree, "--parallel", str(jobs or os.cpu_count()),
                   "--target", "bench_ranks", "bench_ranks_hdf5"]
    for command in (configure, compile_all):
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if done.returncode != 0:
            sys.exit(done.stdout)
    return tree / "bench" / "bench_ranks", tree / "bench" / "bench_ranks_hdf5"


def subjects(programs, ranks):
    ours, hdf5 = programs
    yield FILES, [ours, "--ranks-per-file", "1"]
    yield ONE, [ours, "--ranks-per-file", str(ranks)]
    yield THREADS, [ours, "--ranks-per-file", str(ranks), "--threads", "2"]
    yield HDF5, [hdf5]


def run_once(command, ranks, sizes, folder):
    output = tempfile.mkdtemp(prefix="run-", dir=folder)
    os.sync()
    flags = [word for name, value in sizes.items() for word in (f"--{name}", str(value))]
    done = subprocess.run([*MPIRUN, "-np", str(ranks), *command, *flags, "--output", output],
                          capture_output=True, text=True)
    shutil.rmtree(output)
    if done.returncode != 0:
        sys.exit(f"{shlex.join(map(str, command))} failed:\n{done.stderr}")
    return json.loads(done.stdout)


def measure(options, programs, folder):
    sizes = QUICK_SIZES if options.quick else SIZES
    runs = {}
    for number in range(options.repetitions):
        for ranks in RANKS:
            for name, command in subjects(programs, ranks):
                measured = run_once(command, ranks, sizes, folder)
                runs.setdefault(name, {}).setdefault(str(ranks), []).append(measured)
                print(f"  round {number + 1}: {ranks} ranks, {name}: {measured['seconds']:.3f} s, "
                      f"{measured['file_bytes'] / 1e6:.1f} MB", flush=True)
    return sizes, runs


def measure_empty_steps(programs, folder):
    """Seconds of a step of one file for all ranks, by their number."""
    seconds = {}
    for ranks in RANKS:
        command = [programs[0], "--ranks-per-file", str(ranks)]
        measured = run_once(command, ranks, EMPTY_SIZES, folder)
        seconds[str(ranks)] = measured["seconds"] / EMPTY_SIZES["steps"]
        print(f"  {ranks} ranks, a step of almost nothing: {seconds[str(ranks)] * 1e3:.3g} ms",
              flush=True)
    return seconds


def median(runs, key):
    return statistics.median(run[key] for run in runs)


def cells(name, ranks, runs):
    ours, alone, peers = runs[name][ranks], runs[name]["1"], runs[HDF5][ranks]
    seconds = median(ours, "seconds")
    return (ranks, name, f"{median(ours, 'bytes_in') / 1e6:,.0f} MB", f"{seconds:.3g} s",
            f"{median(ours, 'close_seconds'):.2g} s",
            f"{median(ours, 'bytes_in') / seconds / 1e6:,.0f} MB/s",
            f"{seconds / median(alone, 'seconds'):.2f}",
            f"{seconds / median(peers, 'seconds'):.2f}",
            f"{median(ours, 'file_bytes') / 1e6:,.1f} MB",
            f"{median(ours, 'peak_beyond_host') / 2**20:,.0f} MiB")


HEADINGS = ("Ranks", "Written by", "Values", "Time", "of it in close", "Throughput", "Time / of 1 rank", "Time / HDF5",
            "Files", "Most memory of a rank, beyond its values")


def table(runs):
    return [HEADINGS, *(cells(name, str(ranks), runs) for ranks in RANKS for name in runs)]


def plain(lines):
    widths = [max(len(line[column]) for line in lines) for column in range(len(HEADINGS))]
    return "\n".join("  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip()
                     for line in lines)


def markdown(lines):
    rows = ["| " + " | ".join(line) + " |" for line in lines]
    return "\n".join([rows[0], "|" + "---|" * len(HEADINGS), *rows[1:]])


def section(results, lines):
    about = ", ".join(f"{name} {value}" for name, value in results["machine"].items())
    sizes = results["sizes"]
    return "\n\n".join([
        BEGIN,
        f"Measured by `{results['command']}` at revision {results['revision']} on {results['date']}: "
        f"{about}; medians of {results['repetitions']} rounds. Each rank has {sizes['edge']}³ nodes "
        f"and {sizes['steps']} steps.",
        markdown(lines),
        "A step of almost nothing takes " + ", ".join(
            f"{seconds * 1e3:.2g} ms with {ranks} rank{'s' if ranks != '1' else ''}"
            for ranks, seconds in results["empty_steps"].items()) + ".",
        END])


def publish(options, results, lines):
    figures, page = ROOT / "bench/ranks/results.json", ROOT / "docs/performance.md"
    if options.quick:
        folder = ROOT / "build/bench/try"
        folder.mkdir(parents=True, exist_ok=True)
        shutil.copy(page, folder)
        figures, page = folder / "ranks.json", folder / "performance.md"
    figures.write_text(json.dumps(results, indent=1) + "\n")
    text, count = re.subn(re.escape(BEGIN) + ".*" + re.escape(END),
                          lambda _: section(results, lines), page.read_text(), flags=re.DOTALL)
    if count != 1:
        sys.exit(f"{page} has no place for the table: {BEGIN}")
    page.write_text(text)
    print(f"Written: {figures}, {page}")


def main():
    options = parse_options()
    programs = build(options.jobs)
    with tempfile.TemporaryDirectory(prefix="moxwriter-bench-", dir=options.output) as folder:
        results = machine.describe(ROOT, Path(folder))
        results["command"] = shlex.join(["bench/mpi", *sys.argv[1:]])
        results["repetitions"] = options.repetitions
        results["sizes"], results["runs"] = measure(options, programs, Path(folder))
        results["empty_steps"] = measure_empty_steps(programs, Path(folder))
    lines = table(results["runs"])
    print(plain(lines))
    publish(options, results, lines)


if __name__ == "__main__":
    main()
