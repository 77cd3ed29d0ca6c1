# SPDX-License-Identifier: MIT
"""Builds the wheel: CMake compiles, and installs the package with the libraries inside it."""

import os
import pathlib
import re
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

TREE = pathlib.Path(__file__).parent.resolve()
VERSION = re.search(r"project\(Larynth VERSION (\S+)", (TREE / "CMakeLists.txt").read_text())[1]
OPTIONS = {
    "CMAKE_BUILD_TYPE": "Release",
    "CMAKE_INSTALL_LIBDIR": "larynth/lib",
    "CMAKE_PLATFORM_NO_VERSIONED_SONAME": "ON",  # wheels have no symbolic links
    "LARYNTH_PACKAGES": "OFF",
    "LARYNTH_PYTHON": "ON",
    "LARYNTH_PYTHON_DIR": ".",
    "LARYNTH_TESTS": "OFF",
    "Python_EXECUTABLE": sys.executable,
}


class BuildByCMake(build_ext):
    def run(self):
        package, work = pathlib.Path(self.build_lib).resolve(), pathlib.Path(self.build_temp).resolve()
        shutil.rmtree(package / "larynth", ignore_errors=True)
        options = [f"-D{name}={value}" for name, value in OPTIONS.items()]
        generator = ["-GNinja"] if shutil.which("ninja") and "CMAKE_GENERATOR" not in os.environ else []
        targets = ["larynth_python", "larynth_register_modules"]
        self.cmake("-S", TREE, "-B", work, *generator, *options, f"-DCMAKE_INSTALL_PREFIX={package}")
        self.cmake("--build", work, "--parallel", str(os.cpu_count()), "--target", *targets)
        for component in ("Runtime", "Python"):
            self.cmake("--install", work, "--component", component, "--strip")
        (package / "larynth/lib/larynth/register-modules").unlink()  # for packages of the system

    def cmake(self, *arguments):
        subprocess.run(["cmake", *map(str, arguments)], check=True)


setup(
    version=VERSION,
    packages=[],
    ext_modules=[Extension("larynth._larynth", sources=[])],
    cmdclass={"build_ext": BuildByCMake},
)
