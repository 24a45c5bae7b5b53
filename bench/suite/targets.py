"""The rows of the table: what is compared, and what it should come to."""

import operator
import statistics
from dataclasses import dataclass, field

from workloads import BEFORE, READ_BLOCK_SIZES, ours, recoverable_cases

AT_LEAST, AT_MOST = ">=", "<="
COMPARISONS = {AT_LEAST: operator.ge, AT_MOST: operator.le}
# Code and small buffers that a process touches for the first time when it writes.
PROCESS_BYTES = 1 << 20
LARGE_PAGE = 2 << 20
WIDTHS = (1, 2, 3, 4, 5, 6, 8)


@dataclass
class Row:
    workload: str
    encoder: str
    quantity: str
    # One value for each round.
    ratios: list = field(default_factory=list)
    values: str = ""
    comparison: str = None
    limit: float = None

    @property
    def ratio(self):
        return statistics.median(self.ratios) if self.ratios else None

    @property
    def verdict(self):
        if self.ratio is None:
            return "not measured"
        if self.limit is None:
            return ""
        return "ok" if COMPARISONS[self.comparison](self.ratio, self.limit) else "missed"


@dataclass
class Metric:
    of: callable
    format: callable

    def median(self, runs):
        return self.format(statistics.median(self.of(run) for run in runs))


TIME = Metric(lambda run: run["seconds"], lambda value: f"{value:.3g} s")
THROUGHPUT = Metric(lambda run: run.get("throughput") or run["bytes_in"] / run["seconds"],
                    lambda value: f"{value / 1e6:,.0f} MB/s")
FILE = Metric(lambda run: run["file_bytes"], lambda value: f"{value / 1e6:,.1f} MB")
MEMORY = Metric(lambda run: run["peak_beyond_host"], lambda value: f"{value / 2**20:,.0f} MiB")


class Comparer:
    """Makes the rows of one workload and encoder."""

    def __init__(self, key, encoder, subjects):
        self.key, self.encoder, self.subjects = key, encoder, subjects

    def row(self, quantity, metric, subject, other, comparison=None, limit=None):
        """A row for the ratio of what two subjects measured in the same round."""
        row = Row(self.key, self.encoder, quantity, comparison=comparison, limit=limit)
        pairs = list(zip(self.subjects.get(subject, ()), self.subjects.get(other, ())))
        if pairs:
            row.ratios = [metric.of(mine) / metric.of(theirs) for mine, theirs in pairs]
            row.values = " / ".join(metric.median([pair[side] for pair in pairs])
                                    for side in (0, 1))
        return row


def transient_rows(entry, encoder):
    compare = Comparer("a", encoder, entry["subjects"])
    mine, bare = ours(encoder), f"bare {encoder}"
    to_hdf5 = {"zlib": 1.0, "libdeflate": 2.0, "isal": 15.0}
    to_bare = {"zlib": (AT_LEAST, 0.97), "isal": (AT_LEAST, 0.6)}
    file_to_hdf5 = {"zlib": (AT_MOST, 0.90), "isal": (AT_MOST, 1.0)}
    yield compare.row("throughput / HDF5", THROUGHPUT, mine, "HDF5", AT_LEAST, to_hdf5[encoder])
    yield compare.row(f"throughput / bare {encoder} on the same blocks", THROUGHPUT, mine, bare,
                      *to_bare.get(encoder, ()))
    yield compare.row("throughput / Exodus", THROUGHPUT, mine, "Exodus")
    yield compare.row("throughput / VTK", THROUGHPUT, mine, "VTK")
    yield compare.row("throughput / memcpy of the same blocks", THROUGHPUT, mine, "bare memcpy")
    yield compare.row("time / fwrite of such a file", TIME, mine, "bare fwrite")
    yield compare.row("file / HDF5's", FILE, mine, "HDF5", *file_to_hdf5.get(encoder, ()))
    yield compare.row("file / Exodus's", FILE, mine, "Exodus")
    yield compare.row("file / VTK's", FILE, mine, "VTK")
    yield compare.row(f"file / streams of bare {encoder}", FILE, mine, bare)
    if encoder == "libdeflate":
        yield compare.row("file / ours with zlib", FILE, mine, ours("zlib"), AT_MOST, 1.01)


def part_rows(entry, encoder):
    compare = Comparer("b", encoder, entry["subjects"])
    limit = {"zlib": (AT_MOST, 0.8), "isal": (AT_MOST, 0.15)}.get(encoder, ())
    mine = ours(encoder)
    yield compare.row("time / HDF5, compressed", TIME, mine, "HDF5", *limit)
    yield compare.row("time / HDF5, contiguous", TIME, mine, "HDF5 contiguous")
    yield compare.row("file / HDF5's, compressed", FILE, mine, "HDF5")
    yield compare.row("file / HDF5's, contiguous", FILE, mine, "HDF5 contiguous")
    yield compare.row("time / HDF5, newest format", TIME, mine, "HDF5 newest")
    yield compare.row("file / HDF5's, newest format", FILE, mine, "HDF5 newest")


def path_rows(entry, encoder):
    compare = Comparer("c", encoder, entry["subjects"])
    limit = {"zlib": (AT_MOST, 0.25), "isal": (AT_MOST, 0.1)}.get(encoder, ())
    for shape in ("groups", "one group"):
        mine = ours(encoder, f", {shape} 1x")
        yield compare.row(f"{shape}: time of 4x / 1x", TIME, ours(encoder, f", {shape} 4x"), mine,
                          AT_MOST, 4.6)
        yield compare.row(f"{shape}: time / HDF5 groups", TIME, mine, f"HDF5, {shape} 1x", *limit)
        yield compare.row(f"{shape}: time / HDF5 groups, newest format", TIME, mine,
                          f"HDF5 newest, {shape} 1x")
        yield compare.row(f"{shape}: file / HDF5's", FILE, mine, f"HDF5, {shape} 1x")
        yield compare.row(f"{shape}: file / HDF5's, newest format", FILE, mine,
                          f"HDF5 newest, {shape} 1x")


def model_rows(entry, encoder):
    compare = Comparer("d", encoder, entry["subjects"])
    limit = {"zlib": (AT_MOST, 0.8), "isal": (AT_MOST, 0.4)}.get(encoder, ())
    yield compare.row("time / HDF5", TIME, ours(encoder), "HDF5", *limit)
    yield compare.row("files / HDF5's", FILE, ours(encoder), "HDF5")


def memory_row(entry, encoder, count):
    """Peak beyond the host's array, as a part of what two blocks and a compressed one take."""
    block = entry["sizes"]["bytes"]
    row = Row("e", encoder, f"{count} datasets: peak beyond the host's array / "
              "(2 blocks + a compressed one + 1 MiB)", comparison=AT_MOST, limit=1.0)
    runs = entry["subjects"].get(ours(encoder, f", {count} datasets"), [])
    allowed = [2 * block + run["file_bytes"] / count + PROCESS_BYTES for run in runs]
    row.ratios = [MEMORY.of(run) / most for run, most in zip(runs, allowed)]
    if runs:
        row.values = f"{MEMORY.median(runs)} / {MEMORY.format(statistics.median(allowed))}"
    return row


def large_rows(entry, encoder):
    compare = Comparer("e", encoder, entry["subjects"])
    few, many = entry["sizes"]["few"], entry["sizes"]["many"]
    yield memory_row(entry, encoder, few)
    yield memory_row(entry, encoder, many)
    yield compare.row(f"peak with {many} / with {few} datasets", MEMORY,
                      ours(encoder, f", {many} datasets"), ours(encoder, f", {few} datasets"),
                      AT_MOST, 1.01)


def shuffle_rows(entry, _encoder):
    compare = Comparer("shuffle", "", entry["subjects"])
    for width in WIDTHS:
        yield compare.row(f"width {width}: bandwidth / memcpy", THROUGHPUT,
                          f"shuffle/width:{width}", f"copy/width:{width}", AT_LEAST, 0.5)


def transient_in_threads_rows(entry, encoder):
    if encoder == "isal":
        return
    compare = Comparer("f", encoder, entry["subjects"])
    mine, alone = ours(encoder, ", 2 threads"), ours(encoder, ", 0 threads")
    to_bare = {"zlib": (AT_LEAST, 0.95)}
    to_hdf5 = {"zlib": (AT_LEAST, 1.5), "libdeflate": (AT_LEAST, 3)}
    yield compare.row(f"2 threads: throughput / bare {encoder} in 2 threads", THROUGHPUT, mine,
                      f"bare {encoder}, 2 threads", *to_bare.get(encoder, ()))
    yield compare.row("2 threads: throughput / HDF5", THROUGHPUT, mine, "HDF5",
                      *to_hdf5.get(encoder, ()))
    yield compare.row("throughput of 2 / of 0 threads", THROUGHPUT, mine, alone)
    if encoder == "zlib":
        yield compare.row("0 threads: throughput / before there were threads", THROUGHPUT, alone,
                          BEFORE, AT_LEAST, 0.99)
    yield compare.row(f"bare {encoder}: throughput of 2 / of 1 threads", THROUGHPUT,
                      f"bare {encoder}, 2 threads", f"bare {encoder}, 1 threads")


def computing_rows(entry, encoder):
    if encoder == "isal":
        return
    compare = Comparer("g", encoder, entry["subjects"])
    yield compare.row("time within calls, 1 / 0 threads", TIME, ours(encoder, ", 1 threads"),
                      ours(encoder, ", 0 threads"),
                      *{"zlib": (AT_MOST, 0.1)}.get(encoder, ()))


def reading_rows(entry, inflater):
    compare = Comparer("h", inflater, entry["subjects"])
    limit = {"zlib": (AT_MOST, 0.8), "libdeflate": (AT_MOST, 0.5)}.get(inflater, ())
    mine, bare = f"moxread {inflater}", f"bare {inflater}"
    yield compare.row("time of reading all / HDF5", TIME, mine, "HDF5", *limit)
    yield compare.row(f"time of inflating the blocks by bare {inflater} / HDF5", TIME, bare, "HDF5")


def reading_one_rows(entry, inflater):
    compare = Comparer("i", inflater, entry["subjects"])
    for name in READ_BLOCK_SIZES:
        # The reader takes libdeflate where it is there.
        is_aimed_at = inflater == "libdeflate" and name == "16 MiB"
        yield compare.row(f"blocks of {name}: time of reading one dataset / HDF5", TIME,
                          f"moxread {inflater}, {name}", "HDF5",
                          *((AT_MOST, 1.5) if is_aimed_at else ()))
        yield compare.row(f"blocks of {name}: time of inflating one by bare {inflater} / HDF5", TIME,
                          f"bare {inflater}, {name}", "HDF5")


def in_large_pages(size):
    """It may begin anywhere in a page, so that its end touches one more."""
    return size + LARGE_PAGE


def bounded_memory_row(entry, count):
    """Peak beyond the host's array, as a part of what is promised for so many threads."""
    block = entry["sizes"]["bytes"]
    row = Row("threads", "zlib", f"memory, {count} threads: peak beyond the host's array / "
              f"({count + 2} blocks + {count + 1} compressed ones, in pages of 2 MiB, "
              "+ 1 MiB for each thread and all else)",
              comparison=AT_MOST, limit=1.0)
    runs = entry["subjects"].get(ours("zlib", f", memory, {count} threads"), [])
    allowed = [(count + 2) * in_large_pages(block)
               + (count + 1) * in_large_pages(run["file_bytes"] // 12)
               + (count + 1) * PROCESS_BYTES for run in runs]
    row.ratios = [MEMORY.of(run) / most for run, most in zip(runs, allowed)]
    if runs:
        row.values = f"{MEMORY.median(runs)} / {MEMORY.format(statistics.median(allowed))}"
    return row


def two_to_none(key, quantity, workload, metric, entry, *target):
    compare = Comparer(key, "zlib", entry["subjects"])
    return compare.row(quantity, metric, ours("zlib", f", {workload}, 2 threads"),
                       ours("zlib", f", {workload}, 0 threads"), *target)


def small_thing_rows(entry, encoder):
    if encoder != "zlib":
        return
    yield two_to_none("j", "paths: time of 2 / of 0 threads", "paths", TIME, entry)
    yield two_to_none("j", "small models: time of 2 / of 0 threads", "small-models", TIME, entry)


def thread_rows(entry, encoder):
    if encoder != "zlib":
        return
    yield two_to_none("threads", "4 models at once: throughput of 2 threads each / of 0",
                      "models-at-once", THROUGHPUT, entry, AT_LEAST, 0.9)
    for count in (1, 2, 4):
        yield bounded_memory_row(entry, count)


def recoverable_rows(entry, encoder):
    compare = Comparer("recoverable", encoder, entry["subjects"])
    of_large = {"zlib": (AT_MOST, 1.05), "isal": (AT_MOST, 1.3)}.get(encoder, ())
    for name, *_ in recoverable_cases(entry["sizes"], None):
        limit = of_large if name.startswith("a, ") else (AT_MOST, 1.3)
        yield compare.row(f"{name}: time recoverable / as ever", TIME,
                          ours(encoder, f", {name}, recoverable"),
                          ours(encoder, f", {name}, as ever"), *limit)


MAKERS = {"a": transient_rows, "b": part_rows, "c": path_rows, "d": model_rows, "e": large_rows,
          "f": transient_in_threads_rows, "g": computing_rows, "h": reading_rows,
          "i": reading_one_rows, "j": small_thing_rows, "threads": thread_rows,
          "recoverable": recoverable_rows}


def rows(measured):
    """All rows of what was measured, by workload."""
    result = []
    for key, make in MAKERS.items():
        if key in measured:
            for encoder in measured[key]["encoders"]:
                result += make(measured[key], encoder)
    if "shuffle" in measured:
        result += shuffle_rows(measured["shuffle"], None)
    return result
