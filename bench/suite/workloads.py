"""What is measured: for each workload its subjects, in the order in which they take turns."""

import json
import os
import shutil
import subprocess
from dataclasses import dataclass, field, replace
from pathlib import Path
from typing import Callable

KEYS = {
    "a": "a transient result",
    "b": "parts with small datasets",
    "c": "component paths",
    "d": "small models",
    "e": "memory for large datasets",
    "f": "a transient result, compressed by threads",
    "g": "a host that computes meanwhile",
    "h": "reading a transient result",
    "i": "reading one dataset of many",
    "j": "paths and small models, with threads and without",
    "threads": "several models at once, and memory, with threads",
    "shuffle": "sorting values into byte planes",
    "recoverable": "runs that can be recovered",
}

SIZES = {
    "a": {"edge": 100, "steps": 20},
    "b": {"parts": 10000, "datasets": 20},
    "c": {"groups": 1000, "shapes": 1000},
    "d": {"models": 1000, "edge": 10},
    "e": {"bytes": 256 << 20, "few": 10, "many": 40, "block_limit": None},
    "f": {"edge": 100, "steps": 20},
    "g": {"edge": 100, "steps": 8},
    "h": {"edge": 100, "steps": 20},
    "i": {"bytes": 4000000, "datasets": 500},
    "j": {"groups": 1000, "shapes": 1000, "models": 1000},
    "threads": {"edge": 100, "steps": 4, "bytes": 64 << 20},
    "shuffle": {},
    "recoverable": {"edge": 100, "steps": 20, "parts": 10000, "datasets": 20, "groups": 1000,
                    "shapes": 1000},
}

QUICK_SIZES = {
    "a": {"edge": 24, "steps": 3},
    "b": {"parts": 100, "datasets": 20},
    "c": {"groups": 20, "shapes": 100},
    "d": {"models": 10, "edge": 10},
    # The limit is below the size of a dataset, as it is in the whole run.
    "e": {"bytes": 48 << 20, "few": 2, "many": 4, "block_limit": 40 << 20},
    "f": {"edge": 40, "steps": 8},
    "g": {"edge": 40, "steps": 8},
    "h": {"edge": 40, "steps": 8},
    "i": {"bytes": 400000, "datasets": 50},
    "j": {"groups": 20, "shapes": 100, "models": 10},
    "threads": {"edge": 40, "steps": 4, "bytes": 24 << 20},
    "shuffle": {},
    "recoverable": {"edge": 40, "steps": 8, "parts": 100, "datasets": 20, "groups": 20,
                    "shapes": 100},
}

UNLIMITED = 1 << 30
# The library as it was before models could have threads.
BEFORE = "moxwriter before threads"
# For what takes long and has no target.
ONCE = 1
# Of the workloads with threads: a model of a few hundred megabytes then has blocks for all cores.
BLOCK_SIZE = 16 << 20
QUICK_BLOCK_SIZE = 1 << 20


@dataclass
class Subject:
    name: str
    command: list
    most_rounds: int = UNLIMITED
    environment: dict = field(default_factory=dict)
    # Where it writes, if not where all others do.
    folder: Path = None


def nothing():
    pass


@dataclass
class Workload:
    key: str
    sizes: dict
    subjects: list = field(default_factory=list)
    most_rounds: int = UNLIMITED
    prepare: Callable = nothing
    clean_up: Callable = nothing
    # Does all by itself; for subjects that take their turns inside of one process.
    measure: Callable = None

    @property
    def title(self):
        return KEYS[self.key]


def command(program, workload, sizes):
    flags = [text for name, value in sizes.items() for text in (f"--{name}", str(value))]
    return [str(program), workload, *flags]


def ours(encoder, detail=""):
    return f"moxwriter {encoder}{detail}"


def of_encoder(programs, encoder, workload, sizes, detail="", environment=None):
    return Subject(ours(encoder, detail), command(programs.moxwriter, workload, sizes),
                   environment={"MOXWRITER_ENCODER": encoder, **(environment or {})})


def of_each_encoder(programs, encoders, workload, sizes):
    return [of_encoder(programs, encoder, workload, sizes) for encoder in encoders]


def of_hdf5(programs, name, workload, sizes, rounds=UNLIMITED):
    if "hdf5" not in programs.peers:
        return []
    return [Subject(name, command(programs.peers["hdf5"], workload, sizes), rounds)]


def limits(programs, encoders, inputs):
    names = ["memcpy", "fwrite", *(name for name in programs.bare_encoders if name in encoders)]
    return [Subject(f"bare {name}", command(programs.limits, name, inputs)) for name in names]


def transient(programs, encoders, sizes, folder):
    peers = {"hdf5": ("HDF5", UNLIMITED), "vtk": ("VTK", ONCE), "exodus": ("Exodus", UNLIMITED)}
    model_folder = folder / "model"
    inputs = {"model": model_folder / "result.mox", "blocks": model_folder / "blocks"}

    def prepare():
        model_folder.mkdir()
        subprocess.run([*command(programs.moxwriter, "transient", sizes), "--output", model_folder],
                       check=True, stdout=subprocess.DEVNULL)
        subprocess.run(command(programs.limits, "extract", inputs), check=True)

    def clean_up():
        for path in inputs.values():
            path.unlink()
        model_folder.rmdir()

    subjects = [Subject(name, command(programs.peers[peer], "transient", sizes), rounds)
                for peer, (name, rounds) in peers.items() if peer in programs.peers]
    subjects += of_each_encoder(programs, encoders, "transient", sizes)
    subjects += limits(programs, encoders, inputs)
    return Workload("a", sizes, subjects, prepare=prepare, clean_up=clean_up)


def parts(programs, encoders, sizes, _folder):
    return Workload("b", sizes, [
        *of_hdf5(programs, "HDF5", "parts", sizes),
        *of_each_encoder(programs, encoders, "parts", sizes),
        *of_hdf5(programs, "HDF5 contiguous", "contiguous-parts", sizes),
        *of_hdf5(programs, "HDF5 newest", "parts-in-newest-format", sizes, ONCE)])


def path_shapes(sizes):
    """Groups and shapes in each, by the name of the tree's shape, in the two sizes."""
    groups, shapes = sizes["groups"], sizes["shapes"]
    return {"groups": ((groups, shapes), (4 * groups, shapes)),
            "one group": ((1, groups * shapes), (1, 4 * groups * shapes))}


def paths(programs, encoders, sizes, _folder):
    subjects = []
    for shape, (once, fourfold) in path_shapes(sizes).items():
        for factor, (groups, shapes) in (("1x", once), ("4x", fourfold)):
            flags = {"groups": groups, "shapes": shapes}
            detail = f", {shape} {factor}"
            if factor == "1x":
                subjects += of_hdf5(programs, f"HDF5{detail}", "paths", flags)
                subjects += of_hdf5(programs, f"HDF5 newest{detail}", "paths-in-newest-format",
                                    flags, ONCE)
            subjects += [of_encoder(programs, encoder, "paths", flags, detail)
                         for encoder in encoders]
    return Workload("c", sizes, subjects)


def small_models(programs, encoders, sizes, _folder):
    return Workload("d", sizes, [
        *of_hdf5(programs, "HDF5", "small-models", sizes),
        *of_each_encoder(programs, encoders, "small-models", sizes)])


def large_results(programs, encoders, sizes, _folder):
    environment = {}
    if sizes["block_limit"] is not None:
        environment["MOXWRITER_DEFAULT_BLOCK_SIZE"] = str(sizes["block_limit"])
    subjects = []
    for encoder in encoders:
        for count in (sizes["few"], sizes["many"]):
            flags = {"bytes": sizes["bytes"], "datasets": count}
            subjects.append(of_encoder(programs, encoder, "large-results", flags,
                                       f", {count} datasets", environment))
    # Memory does not vary between runs as time does.
    return Workload("e", sizes, subjects, most_rounds=1)


def with_threads(count, quick=False):
    """The environment in which a model starts so many threads."""
    size = QUICK_BLOCK_SIZE if quick else BLOCK_SIZE
    return {"MOXWRITER_THREADS": str(count), "MOXWRITER_DEFAULT_BLOCK_SIZE": str(size)}


def is_quick(key, sizes):
    return sizes == QUICK_SIZES[key]


def transient_in_threads(programs, encoders, sizes, folder):
    model_folder = folder / "model"
    inputs = {"model": model_folder / "result.mox", "blocks": model_folder / "blocks"}
    quick = is_quick("f", sizes)

    def prepare():
        model_folder.mkdir()
        subprocess.run([*command(programs.moxwriter, "transient", sizes), "--output", model_folder],
                       check=True, stdout=subprocess.DEVNULL,
                       env={**os.environ, **with_threads(0, quick)})
        subprocess.run(command(programs.limits, "extract", inputs), check=True)

    def clean_up():
        for path in inputs.values():
            path.unlink()
        model_folder.rmdir()

    encoders = [encoder for encoder in encoders if encoder != "isal"]
    subjects = of_hdf5(programs, "HDF5", "transient", sizes)
    if programs.before is not None:
        subjects.append(Subject(BEFORE, command(programs.before, "transient", sizes),
                                environment=with_threads(0, quick)))
    for encoder in encoders:
        for count in (0, 2):
            subjects.append(of_encoder(programs, encoder, "transient", sizes, f", {count} threads",
                                       with_threads(count, quick)))
        if encoder in programs.bare_encoders:
            for count in (1, 2):
                subjects.append(Subject(f"bare {encoder}, {count} threads",
                                        command(programs.limits, encoder,
                                                {**inputs, "threads": count})))
    return Workload("f", sizes, subjects, prepare=prepare, clean_up=clean_up)


def computing_host(programs, encoders, sizes, _folder):
    quick = is_quick("g", sizes)
    return Workload("g", sizes, [
        of_encoder(programs, encoder, "computing", {**sizes, "model-threads": count},
                   f", {count} threads", with_threads(0, quick))
        for encoder in encoders if encoder != "isal" for count in (0, 1)])


def bytes_of_transient(edge, steps):
    nodes, cells = edge**3, (edge - 1)**3
    mesh = nodes * (3 + 1) + cells * (8 + 1 + 1)
    return 4 * (mesh + steps * nodes * (3 + 6))


def make(program, workload, sizes, folder, environment=None):
    """Writes what is read later."""
    folder.mkdir(parents=True)
    subprocess.run([*command(program, workload, sizes), "--output", folder], check=True,
                   stdout=subprocess.DEVNULL, env={**os.environ, **(environment or {})})


# zlib's streams are what HDF5 has.
def written_for_reading(block_size):
    return {"MOXWRITER_ENCODER": "zlib", "MOXWRITER_THREADS": "2",
            "MOXWRITER_DEFAULT_BLOCK_SIZE": str(block_size)}


def reading_all(programs, inflaters, sizes, folder):
    here = folder / "reading"
    model = here / "ours" / "result.mox"

    def prepare():
        make(programs.moxwriter, "transient", sizes, model.parent, written_for_reading(BLOCK_SIZE))
        if "hdf5" in programs.peers:
            make(programs.peers["hdf5"], "transient", sizes, here / "hdf5")

    flags = {"bytes": bytes_of_transient(**sizes)}
    subjects = of_hdf5(programs, "HDF5", "read-transient",
                       {**flags, "steps": sizes["steps"], "model": here / "hdf5" / "result.h5"})
    subjects += [Subject(f"moxread {inflater}",
                         command(programs.read, "all",
                                 {**flags, "inflater": inflater, "model": model}))
                 for inflater in inflaters]
    subjects += [Subject(f"bare {inflater}",
                         command(programs.read, "inflate",
                                 {**flags, "inflater": inflater, "model": model}))
                 for inflater in inflaters]
    return Workload("h", sizes, subjects, prepare=prepare,
                    clean_up=lambda: shutil.rmtree(here))


# Of the model that one dataset is read from, in bytes.
READ_BLOCK_SIZES = {"1 MiB": 1 << 20, "16 MiB": 16 << 20, "200 MiB": 200 << 20}


def reading_one(programs, inflaters, sizes, folder):
    here = folder / "reading"

    def prepare():
        for name, size in READ_BLOCK_SIZES.items():
            make(programs.moxwriter, "large-results", sizes, here / name, written_for_reading(size))
        if "hdf5" in programs.peers:
            make(programs.peers["hdf5"], "large-results", sizes, here / "hdf5")

    # In the middle of a block of 16 MiB, which has five of them.
    flags = {"bytes": sizes["bytes"], "step": sizes["datasets"] // 2 + 2}
    subjects = of_hdf5(programs, "HDF5", "read-one",
                       {**flags, "model": here / "hdf5" / "large.h5"})
    for name in READ_BLOCK_SIZES:
        model = {**flags, "model": here / name / "large.mox"}
        for inflater in inflaters:
            reading = {"inflater": inflater, **model}
            subjects += [Subject(f"moxread {inflater}, {name}",
                                 command(programs.read, "one", reading)),
                         Subject(f"bare {inflater}, {name}",
                                 command(programs.read, "inflate-one", reading))]
    return Workload("i", sizes, subjects, prepare=prepare,
                    clean_up=lambda: shutil.rmtree(here))


def with_and_without_threads(programs, key, sizes, flags):
    quick = is_quick(key, sizes)
    return [of_encoder(programs, "zlib", workload, flags[workload], f", {workload}, {count} threads",
                       with_threads(count, quick))
            for workload in flags for count in (0, 2)]


def small_things_in_threads(programs, _encoders, sizes, _folder):
    flags = {"paths": {"groups": sizes["groups"], "shapes": sizes["shapes"]},
             "small-models": {"models": sizes["models"], "edge": 10}}
    return Workload("j", sizes, with_and_without_threads(programs, "j", sizes, flags))


def many_threads(programs, _encoders, sizes, _folder):
    flags = {"models-at-once": {"models": 4, "edge": sizes["edge"], "steps": sizes["steps"]}}
    subjects = with_and_without_threads(programs, "threads", sizes, flags)
    memory = {"bytes": sizes["bytes"], "datasets": 12}
    for count in (1, 2, 4):
        environment = {"MOXWRITER_THREADS": str(count),
                       "MOXWRITER_DEFAULT_BLOCK_SIZE": str(sizes["bytes"])}
        # Memory does not vary between runs as time does.
        subjects += [replace(of_encoder(programs, "zlib", "large-results", memory,
                                        f", memory, {count} threads", environment),
                             most_rounds=ONCE)]
    return Workload("threads", sizes, subjects)


RECOVERABLE_BLOCK_SIZES = {"200 MiB": 200 << 20, "16 MiB": 16 << 20}


def recoverable_cases(sizes, disk):
    """What is written once as ever and once recoverably: name, workload, flags, bytes of a block,
    folder."""
    def flags(*names):
        return {name: sizes[name] for name in names}

    for place, folder in (("memory", None), ("disk", disk)):
        for name, size in RECOVERABLE_BLOCK_SIZES.items():
            yield f"a, {place}, blocks of {name}", "transient", flags("edge", "steps"), size, folder
    yield "b", "parts", flags("parts", "datasets"), 200 << 20, None
    yield "c", "paths", flags("groups", "shapes"), 200 << 20, None


def recoverable_runs(programs, encoders, sizes, _folder):
    # Next to the build tree: what is in memory elsewhere is on a disk there.
    disk = programs.moxwriter.parent
    subjects = []
    for encoder in encoders:
        for name, workload, flags, size, folder in recoverable_cases(sizes, disk):
            for detail, value in (("as ever", "0"), ("recoverable", "1")):
                subject = of_encoder(programs, encoder, workload, flags, f", {name}, {detail}",
                                     {"MOXWRITER_RECOVERABLE": value,
                                      "MOXWRITER_DEFAULT_BLOCK_SIZE": str(size)})
                subject.folder = folder
                subjects.append(subject)
    return Workload("recoverable", sizes, subjects)


def kernel_runs(report):
    """Bandwidths of the kernels' repetitions, by kernel and width."""
    runs = {}
    for entry in report["benchmarks"]:
        if entry["run_type"] == "iteration":
            name = "/".join(entry["name"].split("/")[:2])
            runs.setdefault(name, []).append({"throughput": entry["bytes_per_second"]})
    return runs


def shuffling(programs, _encoders, sizes, folder):
    def measure(repetitions):
        path = folder / "shuffle.json"
        subprocess.run([programs.shuffle, f"--benchmark_repetitions={repetitions}",
                        "--benchmark_enable_random_interleaving=true", f"--benchmark_out={path}"],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return kernel_runs(json.loads(path.read_text()))

    return Workload("shuffle", sizes, measure=measure)


MAKERS = {"a": transient, "b": parts, "c": paths, "d": small_models, "e": large_results,
          "f": transient_in_threads, "g": computing_host,
          "h": reading_all, "i": reading_one, "j": small_things_in_threads, "threads": many_threads,
          "shuffle": shuffling, "recoverable": recoverable_runs}


def chosen(keys, programs, encoders, quick, folder: Path):
    sizes = QUICK_SIZES if quick else SIZES
    return [MAKERS[key](programs, encoders, sizes[key], folder) for key in keys]
