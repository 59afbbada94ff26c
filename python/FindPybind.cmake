# Looks for pybind11 and the Python it builds for, and sets the option
# VEXPLOT_BUILD_PYTHON (the `vexplot` Python module in python/).
#
# The module is built for Debian's /usr/bin/python3 unless Python_EXECUTABLE
# names another: a python3 found first on PATH (pyenv, a virtual env) often
# lacks NumPy or the development headers. Sanitizer builds leave the module
# out by default, as a Python interpreter cannot load an instrumented module
# without preloading the sanitizer runtime.
if(NOT DEFINED Python_EXECUTABLE AND EXISTS /usr/bin/python3)
  set(Python_EXECUTABLE /usr/bin/python3 CACHE FILEPATH "The Python interpreter the vexplot module is built for")
endif()
set(PYBIND11_FINDPYTHON ON)
find_package(pybind11 CONFIG QUIET)
set(vexplot_python_default OFF)
if(pybind11_FOUND AND NOT VEXPLOT_SANITIZE AND NOT VEXPLOT_FUZZ)
  set(vexplot_python_default ON)
endif()
option(VEXPLOT_BUILD_PYTHON "Build the Python module vexplot (needs pybind11, python3-dev)" ${vexplot_python_default})
if(VEXPLOT_BUILD_PYTHON AND NOT pybind11_FOUND)
  message(FATAL_ERROR "VEXPLOT_BUILD_PYTHON needs pybind11 (Debian: pybind11-dev python3-dev python3-numpy)")
endif()
