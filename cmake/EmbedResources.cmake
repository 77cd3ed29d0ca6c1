# SPDX-License-Identifier: MIT

set(LARYNTH_RESOURCE_TABLE_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/WriteResourceTable.cmake)

# Embeds files in a module, with the code by which it finds them (runtime/classes/OwnModule.h): on Windows as resources,
# elsewhere in a table that the module exports. The list has three entries a resource: type, number, file; a file may be one that the build makes.
#   larynth_embed_resources(larynth_module REGISTRY 102 LarynthParams.rgs TYPELIB 1 LarynthLib.tlb)
function(larynth_embed_resources target)
  set(files)
  set(statements)
  set(entries ${ARGN})
  while(entries)
    list(POP_FRONT entries type number file)
    list(APPEND files ${file})
    string(APPEND statements "${number} ${type} \"${file}\"\n")
  endwhile()
  if(LARYNTH_RUNTIME STREQUAL windows)
    set(resources ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
    file(CONFIGURE OUTPUT ${resources} CONTENT "${statements}" @ONLY)
    set_property(SOURCE ${resources} PROPERTY OBJECT_DEPENDS ${files})
    target_sources(${target} PRIVATE ${resources} ${PROJECT_SOURCE_DIR}/runtime/windows/OwnModule.cpp)
    return()
  endif()
  set(table ${CMAKE_CURRENT_BINARY_DIR}/${target}_resources.cpp)
  add_custom_command(OUTPUT ${table}
    COMMAND ${CMAKE_COMMAND} "-DRESOURCES=${ARGN}" "-DOUTPUT=${table}" -P ${LARYNTH_RESOURCE_TABLE_SCRIPT}
    DEPENDS ${files} ${LARYNTH_RESOURCE_TABLE_SCRIPT}
    COMMENT "Embedding the resources of ${target}"
    VERBATIM)
  target_sources(${target} PRIVATE ${table} ${PROJECT_SOURCE_DIR}/runtime/classes/OwnModule.cpp)
endfunction()
