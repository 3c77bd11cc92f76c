# Which Python the package is built for: -DPython_EXECUTABLE=..., else that of an active virtual environment, else the
# system's own, for which Debian's packages are. Whether it is built by default: where headers and pybind11 are.
if(NOT DEFINED Python_EXECUTABLE AND NOT DEFINED ENV{VIRTUAL_ENV} AND EXISTS /usr/bin/python3)
  set(Python_EXECUTABLE /usr/bin/python3 CACHE FILEPATH "The Python that the package is built for")
endif()
find_package(Python 3.9 QUIET COMPONENTS Interpreter Development.Module)
set(PYBIND11_NOPYTHON ON) # which would look for a Python of its own
find_package(pybind11 2.10 QUIET)
set(LOOPWISE_PYTHON_DEFAULT OFF)
if(PROJECT_IS_TOP_LEVEL AND Python_Development.Module_FOUND AND pybind11_FOUND)
  set(LOOPWISE_PYTHON_DEFAULT ON)
endif()
