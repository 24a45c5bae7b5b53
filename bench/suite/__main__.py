"""Builds, measures, and reports: what bench/run does once its packages are there."""

import argparse
import os
import shlex
import shutil
import sys
import tempfile
from pathlib import Path

import builds
import machine
import report
import runner
import targets
import workloads

ENCODERS = ("zlib", "libdeflate", "isal")


# The files of the largest workload, and as much again for what else needs memory.
NEEDED_BYTES = 16 << 30


def default_folder():
    """Files in memory show what libraries cost; a disk costs all of them the same."""
    in_memory = Path("/dev/shm")
    fits = os.access(in_memory, os.W_OK) and shutil.disk_usage(in_memory).free >= NEEDED_BYTES
    return in_memory if fits else None


def comma_separated(allowed):
    def parse(text):
        values = text.split(",")
        for value in values:
            if value not in allowed:
                raise argparse.ArgumentTypeError(f"{value} is none of {', '.join(allowed)}")
        return values

    return parse


def parse_options():
    parser = argparse.ArgumentParser(
        prog="bench/run",
        description="Measures moxwriter next to other libraries. A whole run with all encoders "
        "writes bench/results.json, docs/performance.svg and the table of docs/performance.md; "
        "--only replaces its workloads there. Any other run leaves them alone and writes the same "
        "files to build/bench/try.",
    )
    parser.add_argument("--quick", action="store_true", help="small sizes, to try it")
    parser.add_argument("--only", type=comma_separated(tuple(workloads.KEYS)), metavar="a,b,...",
                        default=list(workloads.KEYS), help=f"of {', '.join(workloads.KEYS)}")
    parser.add_argument("--encoders", type=comma_separated(ENCODERS), metavar="zlib,...",
                        default=list(ENCODERS), help=f"of {', '.join(ENCODERS)}")
    parser.add_argument("--repetitions", type=int, metavar="N",
                        help="rounds in which all take their turns (5; 1 with --quick)")
    parser.add_argument("--output", type=Path, metavar="DIR",
                        default=default_folder(),
                        help="folder to write to (/dev/shm if it is large enough, else TMPDIR)")
    parser.add_argument("--jobs", type=int, metavar="N", help="compilers at a time")
    parser.add_argument("--no-install", action="store_true", help="take the packages that are there")
    options = parser.parse_args()
    if options.repetitions is None:
        options.repetitions = 1 if options.quick else 5
    return options


def measure(options, programs, folder, publication, results):
    encoders = [encoder for encoder in options.encoders if encoder in programs.encoders]
    for workload in workloads.chosen(options.only, programs, encoders, options.quick, folder):
        results["workloads"][workload.key] = {
            "command": results["command"],
            "revision": results["revision"],
            "date": results["date"],
            "machine": results["machine"],
            "encoders": encoders,
            "quick": options.quick,
            "sizes": workload.sizes,
            "subjects": runner.run(workload, options.repetitions, folder),
        }
        # What was measured is kept, whatever becomes of the workloads that follow.
        publication.save(results)


def main():
    options = parse_options()
    root = Path(__file__).resolve().parents[2]
    programs = builds.build(root, options.encoders, options.jobs, "f" in options.only)
    whole = not options.quick and set(programs.encoders) == set(ENCODERS)
    publication = report.Publication.recorded(root) if whole else report.Publication.tried(root)
    with tempfile.TemporaryDirectory(prefix="moxwriter-bench-", dir=options.output) as folder:
        results = machine.describe(root, Path(folder))
        results["command"] = shlex.join(["bench/run", *sys.argv[1:]])
        results["workloads"] = publication.earlier_workloads()
        measure(options, programs, Path(folder), publication, results)
    rows = targets.rows(results["workloads"])
    print(report.plain_table(rows))
    publication.publish(results, rows)


if __name__ == "__main__":
    main()
