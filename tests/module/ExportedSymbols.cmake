# SPDX-License-Identifier: MIT
# Fails unless the shared object MODULE exports exactly the symbols of the list EXPECTED.
execute_process(COMMAND ${NM} --dynamic --defined-only --format=posix ${MODULE}
  OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${listing}")
set(exported)
foreach(line IN LISTS lines)
  string(REGEX REPLACE " .*" "" symbol "${line}")
  list(APPEND exported ${symbol})
endforeach()
list(SORT exported)
list(SORT EXPECTED)
if(NOT "${exported}" STREQUAL "${EXPECTED}")
  message(FATAL_ERROR "${MODULE}\nexports:  ${exported}\nexpected: ${EXPECTED}")
endif()
