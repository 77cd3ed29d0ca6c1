# SPDX-License-Identifier: MIT

# Writes the registry scripts of a module's classes and sets `resources` to the list of them that
# larynth_embed_resources() takes. The table has three entries a class: number of the script, class, and the name
# that its ProgID and description are made of. The class identifiers are those of Include/Classes.h.
#   larynth_class_scripts(resources 102 LarynthParams LarynthParams)
function(larynth_class_scripts resources)
  set(identifiers ${PROJECT_SOURCE_DIR}/Include/Classes.h)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${identifiers})
  file(READ ${identifiers} declarations)
  set(list)
  set(table ${ARGN})
  while(table)
    list(POP_FRONT table number class name)
    if(NOT declarations MATCHES "LARYNTH_CLASS\\(${class},[ \n]*\"([^\"]+)\"\\)")
      message(FATAL_ERROR "${identifiers} declares no class ${class}")
    endif()
    string(TOUPPER ${CMAKE_MATCH_1} class_id)
    set(prog_id Larynth.${name})
    set(description "${name} Class")
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${name}.rgs)
    configure_file(${PROJECT_SOURCE_DIR}/module/ClassScript.rgs.in ${script} @ONLY)
    list(APPEND list REGISTRY ${number} ${script})
  endwhile()
  set(${resources} ${list} PARENT_SCOPE)
endfunction()
