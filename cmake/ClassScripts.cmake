# SPDX-License-Identifier: MIT

# Writes the registry scripts of a module's classes and sets `resources` to the list of them that
# larynth_embed_resources() takes. The table has three entries a class: number of the script, class, and the name
# that its ProgID and description are made of. The class identifiers are those of Include/Classes.h. The module's
# sources find the numbers as larynth::script::<class> in "ClassScripts.h".
#   larynth_class_scripts(larynth_module resources 102 LarynthParams LarynthParams)
function(larynth_class_scripts target resources)
  set(identifiers ${PROJECT_SOURCE_DIR}/Include/Classes.h)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${identifiers})
  file(READ ${identifiers} declarations)
  set(list)
  set(numbers)
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
    string(APPEND numbers "inline constexpr LONG ${class} = ${number};\n")
    list(APPEND list REGISTRY ${number} ${script})
  endwhile()
  file(CONFIGURE OUTPUT ${target}/ClassScripts.h @ONLY CONTENT
    "#pragma once\n#include <larynth/Base.h>\nnamespace larynth::script {\n@numbers@}\n")
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target})
  set(${resources} ${list} PARENT_SCOPE)
endfunction()
