"""Has CMake build the extension module of the package for Python; pyproject.toml tells the rest."""

import os
import re
import shlex
import shutil
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = Path(__file__).resolve().parent
# All that is made goes there, as all that CMake makes does. A compiler cache that knows what another
# preset compiled finds it for a folder of the same depth, when the same tool builds in it.
BUILD = Path("build", "pip-" + str(sys.implementation.cache_tag))


class BuildByCMake(build_ext):
    """The library becomes a part of the module, so that the package stands alone."""

    def build_extension(self, extension: Extension) -> None:
        folder = ROOT / BUILD
        options = {
            "CMAKE_BUILD_TYPE": "Release",
            "BUILD_SHARED_LIBS": "OFF",
            "MOXWRITER_BUILD_TOOLS": "OFF",
            "MOXWRITER_BUILD_TESTS": "OFF",
            "MOXWRITER_BUILD_EXAMPLES": "OFF",
            "MOXWRITER_BUILD_FORTRAN": "OFF",
            "MOXWRITER_BUILD_PYTHON": "ON",
            "MOXWRITER_PYTHON": sys.executable,
        }
        settings = ["-D%s=%s" % option for option in options.items()]
        settings += shlex.split(os.environ.get("CMAKE_ARGS", ""))
        if shutil.which("ninja"):
            settings.append("-GNinja")
        subprocess.run(["cmake", "-S", ROOT, "-B", folder, *settings], check=True)
        jobs = str(os.cpu_count() or 1)
        command = ["cmake", "--build", folder, "--target", "moxwriter_python", "--parallel", jobs]
        subprocess.run(command, check=True)
        target = Path(self.get_ext_fullpath(extension.name))
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(folder / "bindings" / "python" / "moxwriter" / target.name, target)


def version() -> str:
    found = re.search(r"\n    VERSION ([0-9.]+)\n", (ROOT / "CMakeLists.txt").read_text())
    assert found is not None, "CMakeLists.txt has no version"
    return found.group(1)


(ROOT / BUILD).mkdir(parents=True, exist_ok=True)
setup(
    version=version(),
    ext_modules=[Extension("moxwriter._writer", [])],
    cmdclass={"build_ext": BuildByCMake},
    options={"build": {"build_base": str(BUILD)}, "egg_info": {"egg_base": str(BUILD)}},
)
