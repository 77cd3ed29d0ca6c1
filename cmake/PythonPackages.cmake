# SPDX-License-Identifier: MIT
# What the Python package needs. Without it everything else is built all the same.

# The system's interpreter rather than another one in the path: it is the one that Debian's packages are for.
find_program(Python_EXECUTABLE python3 PATHS /usr/bin NO_DEFAULT_PATH DOC "Interpreter that the package is for")
find_package(Python COMPONENTS Interpreter Development.Module QUIET)
find_package(pybind11 CONFIG QUIET)

set(python_missing)
if(NOT Python_Development.Module_FOUND)
  list(APPEND python_missing "Python's headers (python3-dev)")
endif()
if(NOT pybind11_FOUND)
  list(APPEND python_missing "pybind11 (pybind11-dev)")
endif()
if(Python_Interpreter_FOUND)
  execute_process(COMMAND ${Python_EXECUTABLE} -c "import numpy" RESULT_VARIABLE numpy_missing ERROR_QUIET)
endif()
if(NOT Python_Interpreter_FOUND OR numpy_missing)
  list(APPEND python_missing "numpy (python3-numpy)")
endif()
list(JOIN python_missing ", " python_missing)

# An interpreter without a sanitizer does not load what is built with one.
set(python_packages ON)
if(python_missing OR CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
  set(python_packages OFF)
endif()
option(LARYNTH_PYTHON "Build the Python package" ${python_packages})
if(LARYNTH_PYTHON AND python_missing)
  message(FATAL_ERROR "LARYNTH_PYTHON needs ${python_missing}")
elseif(python_missing)
  message(STATUS "The Python package is left out: ${python_missing} was not found")
elseif(NOT LARYNTH_PYTHON)
  message(STATUS "The Python package is left out: LARYNTH_PYTHON is off")
endif()

# Where this interpreter looks for packages below a prefix.
if(LARYNTH_PYTHON)
  execute_process(COMMAND ${Python_EXECUTABLE} -c
      "import re, sysconfig; print(re.search('lib[^/]*/python[^/]*/[^/]*$', sysconfig.get_path('platlib'))[0])"
    OUTPUT_VARIABLE python_dir OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(LARYNTH_PYTHON_DIR ${python_dir} CACHE STRING "Folder of the Python package, below the prefix")
endif()
