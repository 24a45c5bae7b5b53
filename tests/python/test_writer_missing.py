"""Without the extension module everything but writing is there."""

from __future__ import annotations

import shutil
import subprocess
import sys
from pathlib import Path

_PACKAGE = Path(__file__).resolve().parents[2] / "bindings" / "python" / "moxwriter"


def _said(folder: Path, program: str) -> str:
    """What a program prints that finds the sources of the package, and nothing built."""
    shutil.copytree(_PACKAGE, folder / "moxwriter", ignore=shutil.ignore_patterns("_writer*"))
    command = [sys.executable, "-c", program]
    answer = subprocess.run(command, cwd=folder, env={}, capture_output=True, text=True)
    return answer.stdout + answer.stderr


def test_asking_for_the_model_says_how_to_get_it(tmp_path: Path) -> None:
    assert "ImportError: moxwriter.Model needs" in _said(tmp_path, "from moxwriter import Model")


def test_other_names_are_no_attributes(tmp_path: Path) -> None:
    program = "import moxwriter; print(hasattr(moxwriter, 'x'), hasattr(moxwriter, 'open'))"
    assert _said(tmp_path, program) == "False True\n"


def test_the_reader_stands_alone(tmp_path: Path) -> None:
    shutil.copy(_PACKAGE / "reader.py", tmp_path / "reader.py")
    program = "import reader\ntry: reader.open('none')\nexcept reader.Error as e: print('Error', e)"
    answer = subprocess.run(
        [sys.executable, "-c", program], cwd=tmp_path, env={}, capture_output=True, text=True
    )
    assert answer.stdout == "Error none: cannot be opened: No such file or directory\n"
