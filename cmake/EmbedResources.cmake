# SPDX-License-Identifier: MIT

set(LARYNTH_RESOURCE_TABLE_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/WriteResourceTable.cmake)

# Embeds files in a module, with the code by which it finds them, and exports their table: see
# runtime/classes/OwnModule.h. The list has three entries a resource: type, number, file; a file may be one that the build makes.
#   larynth_embed_resources(larynth_module REGISTRY 102 LarynthParams.rgs TYPELIB 1 LarynthLib.tlb)
function(larynth_embed_resources target)
  set(files)
  set(entries ${ARGN})
  while(entries)
    list(POP_FRONT entries type number file)
    list(APPEND files ${file})
  endwhile()
  set(table ${CMAKE_CURRENT_BINARY_DIR}/${target}_resources.cpp)
  add_custom_command(OUTPUT ${table}
    COMMAND ${CMAKE_COMMAND} "-DRESOURCES=${ARGN}" "-DOUTPUT=${table}" -P ${LARYNTH_RESOURCE_TABLE_SCRIPT}
    DEPENDS ${files} ${LARYNTH_RESOURCE_TABLE_SCRIPT}
    COMMENT "Embedding the resources of ${target}"
    VERBATIM)
  target_sources(${target} PRIVATE ${table} ${PROJECT_SOURCE_DIR}/runtime/classes/OwnModule.cpp)
endfunction()
