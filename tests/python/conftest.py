"""Models to read: what the examples write, and what `mox` makes of results of a solver.

The environment names them: MOX_COMMAND the command, MOX_EXAMPLES the programs, MOX_RESULTS folders
with results, the latter two separated by colons.
"""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path
from typing import Dict, List

import pytest

sys.path.append(str(Path(__file__).resolve().parents[2] / "bindings" / "python"))


@pytest.fixture(scope="session")
def mox() -> str:
    return os.environ["MOX_COMMAND"]


def _run_example(program: Path, model: Path, setting: Dict[str, str]) -> None:
    environment = {**os.environ, **setting}
    subprocess.run([str(program), str(model)], env=environment, check=True, capture_output=True)


@pytest.fixture(scope="session")
def examples(tmp_path_factory: pytest.TempPathFactory) -> List[Path]:
    """What the examples write: with one block of values, and with many and index blocks."""
    folder = tmp_path_factory.mktemp("examples")
    for program in map(Path, os.environ["MOX_EXAMPLES"].split(":")):
        _run_example(program, folder / (program.name + ".mox"), {})
        setting = {"MOXWRITER_DEFAULT_BLOCK_SIZE": "300"}
        _run_example(program, folder / (program.name + "_blocks.mox"), setting)
    return sorted(folder.iterdir())


@pytest.fixture(scope="session")
def translated(mox: str, tmp_path_factory: pytest.TempPathFactory) -> List[Path]:
    folder = tmp_path_factory.mktemp("translated")
    for place in os.environ["MOX_RESULTS"].split(":"):
        for result in sorted(Path(place).glob("*.frd")):
            model = folder / (result.stem + ".mox")
            subprocess.run(
                [mox, "translate", str(result), str(model)], check=True, capture_output=True
            )
    return sorted(folder.iterdir())
