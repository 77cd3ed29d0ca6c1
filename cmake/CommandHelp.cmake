# SPDX-License-Identifier: MIT
# The command's manual pages and its completion for shells, made by the command itself.

set(help ${PROJECT_BINARY_DIR}/help)
set(write_help)
find_program(LARYNTH_HELP2MAN help2man)
if(LARYNTH_HELP2MAN)
  list(APPEND write_help COMMAND ${PROJECT_SOURCE_DIR}/tools/make-manual $<TARGET_FILE:larynth_command> ${help}/man1)
  install(DIRECTORY ${help}/man1/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Command)
else()
  message(STATUS "The manual pages are left out: help2man was not found")
endif()
add_custom_command(OUTPUT ${help}/larynth.bash ${help}/larynth.zsh
  COMMAND larynth_command completion bash > ${help}/larynth.bash
  COMMAND larynth_command completion zsh > ${help}/larynth.zsh
  ${write_help}
  DEPENDS larynth_command ${PROJECT_SOURCE_DIR}/tools/make-manual
  COMMENT "Writing the command's manual pages and its completion for shells"
  VERBATIM)
add_custom_target(larynth_help ALL DEPENDS ${help}/larynth.bash)
file(MAKE_DIRECTORY ${help})
install(FILES ${help}/larynth.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME larynth
  COMPONENT Command)
install(FILES ${help}/larynth.zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions RENAME _larynth
  COMPONENT Command)
