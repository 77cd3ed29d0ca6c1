# SPDX-License-Identifier: MIT

find_program(LARYNTH_WIDL x86_64-w64-mingw32-widl REQUIRED DOC "Type-library compiler, Debian package mingw-w64-tools")
find_program(LARYNTH_PERL perl REQUIRED)

# Compiles the interface description LIBRARY.idl of the current folder to a type library and sets `variable` to its
# path. Further arguments: files that it imports.
function(larynth_type_library variable library)
  set(stand_in ${CMAKE_CURRENT_BINARY_DIR}/stdole2.tlb)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/${library}.tlb)
  set(blank ${PROJECT_SOURCE_DIR}/tools/blank-time-stamps)
  # 64-bit slots; no search path but our own, so that only the given files are read.
  set(compile ${LARYNTH_WIDL} --nostdinc -m64 -t -I ${CMAKE_CURRENT_SOURCE_DIR} -L ${CMAKE_CURRENT_BINARY_DIR})
  add_custom_command(OUTPUT ${stand_in}
    COMMAND ${compile} -o ${stand_in} ${CMAKE_CURRENT_SOURCE_DIR}/stdole2.idl
    DEPENDS stdole2.idl
    VERBATIM)
  add_custom_command(OUTPUT ${output}
    COMMAND ${compile} -o ${output} ${CMAKE_CURRENT_SOURCE_DIR}/${library}.idl
    COMMAND ${LARYNTH_PERL} ${blank} ${output}
    DEPENDS ${library}.idl ${ARGN} ${stand_in} ${blank}
    COMMENT "Compiling the type library ${library}"
    VERBATIM)
  set(${variable} ${output} PARENT_SCOPE)
endfunction()
