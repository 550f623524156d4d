"""pip install .: CMake builds the module, with the libraries and the rooms of the tool in it, and the files beside it. What the
variable CMAKE_ARGS holds, CMake is told, too."""

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
BUILD = ROOT / "build/python"


class BuildWithCMake(build_ext):
    def build_extension(self, extension):
        for step in (["--preset", "python", f"-DPython_EXECUTABLE={Path(sys.executable).resolve()}",
                      *shlex.split(os.environ.get("CMAKE_ARGS", ""))],
                     ["--build", "--preset", "python", "--target", "quor_isdbt_module"]):
            subprocess.run(["cmake", *step], cwd=ROOT, check=True)
        package = Path(self.get_ext_fullpath(extension.name)).parent
        shutil.copytree(BUILD / "python/quor_isdbt", package, ignore=shutil.ignore_patterns("__pycache__"), dirs_exist_ok=True)


BUILD.mkdir(parents=True, exist_ok=True)
setup(
    version=re.search(r"project\(QuorISDBT VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text())[1],
    packages=[],
    ext_modules=[Extension("quor_isdbt._quor_isdbt", [])],
    cmdclass={"build_ext": BuildWithCMake},
    options={"egg_info": {"egg_base": str(BUILD)}, "build": {"build_base": str(BUILD / "pip")}},
)
