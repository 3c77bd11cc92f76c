"""Builds the Python package by CMake: pip install --no-build-isolation ."""

import os
import pathlib
import re
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

root = pathlib.Path(__file__).resolve().parent
version = re.search(r"^project\(loopwise VERSION ([0-9.]+)", (root / "CMakeLists.txt").read_text(), re.M)
assert version


class CMakeBuild(build_ext):
    """The compiled module, into the folder where setuptools expects it."""

    def build_extension(self, extension: Extension) -> None:
        module = pathlib.Path(self.get_ext_fullpath(extension.name)).resolve()
        build = pathlib.Path(self.build_temp).resolve()
        options = {
            "CMAKE_BUILD_TYPE": "Release",
            "LOOPWISE_PYTHON": "ON",
            "LOOPWISE_PROGRAM": "OFF",
            "LOOPWISE_TESTS": "OFF",
            "LOOPWISE_EXAMPLES": "OFF",
            "LOOPWISE_INSTALL": "OFF",
            "Python_EXECUTABLE": sys.executable,
        }
        try:
            import pybind11

            options["pybind11_DIR"] = pybind11.get_cmake_dir()
        except ImportError:
            pass  # then CMake looks where distributions put it
        definitions = [f"-D{name}={value}" for name, value in options.items()]
        subprocess.run(["cmake", "-S", str(root), "-B", str(build), *definitions], check=True)
        jobs = str(len(os.sched_getaffinity(0)) if hasattr(os, "sched_getaffinity") else os.cpu_count() or 1)
        make = ["cmake", "--build", str(build), "--target", "loopwise_python", "-j", jobs]
        subprocess.run(make, check=True)
        module.parent.mkdir(parents=True, exist_ok=True)
        self.copy_file(str(build / "python" / "loopwise" / module.name), str(module))


setup(
    version=version[1],
    packages=["loopwise"],
    package_dir={"": "python"},
    package_data={"loopwise": ["py.typed", "_core.pyi"]},
    ext_modules=[Extension("loopwise._core", sources=[])],
    cmdclass={"build_ext": CMakeBuild},
)
