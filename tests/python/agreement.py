"""Whether the Python reader and `mox` say the same of model files.

Of files that may be damaged:

* `mox verify` finds a file sound exactly when the reader opens it, finds all blocks sound
  (`File.check`), and gives every dataset;
* it calls a file incomplete exactly when the reader does;
* where only blocks of values are damaged, `mox dump` gives a dataset exactly when the reader does,
  and both give the same bytes.

The reader raises nothing but errors of its own family. As a command:

    agreement.py MOX COUNT MODEL...    damages the models COUNT times
"""

from __future__ import annotations

import io
import json
import random
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path
from typing import Any, Dict, List, Optional, Tuple

import numpy as np

sys.path.append(str(Path(__file__).resolve().parents[2] / "bindings" / "python"))

import damage
import moxwriter

_FILES_AT_ONCE = 100


def dumped(mox: str, file: Path, dataset: moxwriter.Dataset) -> Optional[np.ndarray]:
    """What `mox dump` gives, None if it gives nothing."""
    step = [] if dataset.step is None else ["--step", dataset.step]
    node = "#%d" % dataset.node.id
    command = [mox, "dump", str(file), node, *step, "--format", "npy", "--", dataset.name]
    answer = subprocess.run(command, capture_output=True)
    assert answer.returncode in (0, 1), (command, answer)
    return np.load(io.BytesIO(answer.stdout)) if answer.returncode == 0 else None


def same(left: np.ndarray, right: np.ndarray) -> bool:
    """Whether two arrays have the same shape, type and bytes: NaN is itself."""
    return (
        left.dtype == right.dtype
        and left.shape == right.shape
        and left.tobytes() == right.tobytes()
    )


def verdicts(mox: str, files: List[Path]) -> List[Dict[str, Any]]:
    """What `mox verify` says of each file."""
    command = [mox, "verify", "--json", *map(str, files)]
    answer = subprocess.run(command, capture_output=True)
    assert answer.returncode in (0, 1), answer
    listed = json.loads(answer.stdout.decode("utf-8", "replace"))["files"]
    assert len(listed) == len(files)
    return list(listed)


def _read_all(file: moxwriter.File) -> Optional[moxwriter.Error]:
    """The first error of reading everything."""
    try:
        file.check()
        for node in file.values():
            for dataset in node.datasets:
                dataset.read()
    except moxwriter.Error as error:
        return error
    return None


def _compare_datasets(
    mox: str, path: Path, file: moxwriter.File, choice: random.Random, count: int
) -> int:
    datasets = [dataset for node in file.values() for dataset in node.datasets]
    # The arguments of a process end at the first zero byte.
    datasets = [d for d in datasets if "\0" not in d.name + (d.step or "")]
    chosen = choice.sample(datasets, min(count, len(datasets)))
    for dataset in chosen:
        expected = dumped(mox, path, dataset)
        try:
            found: Optional[np.ndarray] = dataset.read()
        except moxwriter.Error:
            found = None
        assert (found is None) == (expected is None), (path, dataset)
        assert found is None or expected is None or same(found, expected), (path, dataset)
    return len(chosen)


def compare(
    mox: str,
    path: Path,
    verdict: Dict[str, Any],
    choice: random.Random,
    dumped_datasets: int = 3,
) -> Tuple[str, int]:
    """What both say of a file, and how many datasets were compared."""
    error: Optional[moxwriter.Error] = None
    count = 0
    try:
        # Blocks larger than the bound go another way.
        bound = choice.choice([0, 1000, 1 << 28])
        with moxwriter.open(path, cache_bytes=bound) as file:
            error = _read_all(file)
            if choice.randrange(4) == 0 or error is not None:
                count = _compare_datasets(mox, path, file, choice, dumped_datasets)
            opened = True
    except moxwriter.Error as failure:
        error = failure
        opened = False
    assert verdict["ok"] == (error is None), (path, verdict, error)
    if error is None:
        return "sound", count
    is_incomplete = isinstance(error, moxwriter.IncompleteFileError)
    assert is_incomplete == (": incomplete: " in verdict["error"]), (path, verdict, error)
    kind = "incomplete" if is_incomplete else "damaged values" if opened else "damaged"
    return kind, count


def compare_damaged(mox: str, models: List[Path], seeds: range, folder: Path) -> Dict[str, int]:
    """Damages the models in turn, and counts what both readers say of the files."""
    originals = [model.read_bytes() for model in models]
    counts: Dict[str, int] = Counter()
    for first in range(seeds.start, seeds.stop, _FILES_AT_ONCE):
        some = range(first, min(first + _FILES_AT_ONCE, seeds.stop))
        files = [folder / ("%d.mox" % seed) for seed in some]
        for seed, file in zip(some, files):
            file.write_bytes(damage.damaged(originals[seed % len(originals)], seed))
        for seed, file, verdict in zip(some, files, verdicts(mox, files)):
            said, compared = compare(mox, file, verdict, random.Random(seed))
            counts[said] += 1
            counts["datasets compared"] += compared
            file.unlink()
    return counts


def _main() -> None:
    mox, count, models = sys.argv[1], int(sys.argv[2]), [Path(name) for name in sys.argv[3:]]
    with tempfile.TemporaryDirectory() as folder:
        counts = compare_damaged(mox, models, range(count), Path(folder))
    print(", ".join("%s: %d" % item for item in sorted(counts.items())))


if __name__ == "__main__":
    _main()
