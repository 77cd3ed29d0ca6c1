# SPDX-License-Identifier: MIT
# What is installed on Windows, and packed by cpack: one folder, from which the modules can be registered. Everything that
# runs lies together, because Windows looks for libraries there.

install(TARGETS larynth_command larynth_module larynth_companion larynth_runtime
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_BINDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(PROGRAMS packaging/windows/register.cmd DESTINATION .)
install(FILES LICENSE DESTINATION .)
install(FILES ${PROJECT_BINARY_DIR}/module/LarynthLib.tlb DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY Include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/larynth
  FILES_MATCHING PATTERN "*.h" PATTERN ModuleRuntime.h EXCLUDE PATTERN Speech.h EXCLUDE)
install(FILES engine/Exception.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/larynth/engine)

set(CPACK_GENERATOR ZIP)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_FILE_NAME larynth-${PROJECT_VERSION}-windows-x86_64)
include(CPack)
