# SPDX-License-Identifier: MIT
# What is installed, by components: Runtime, Command, Development, Python, SpeechModule. The tree can be moved as a whole: every
# path in it is relative.

file(RELATIVE_PATH lib_from_bin ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(larynth_command PROPERTIES INSTALL_RPATH "\$ORIGIN/${lib_from_bin}")
set_target_properties(larynth_module larynth_companion larynth_register_modules PROPERTIES INSTALL_RPATH "\$ORIGIN/..")
set_target_properties(larynth_face PROPERTIES INSTALL_RPATH "\$ORIGIN" EXPORT_NAME Speech)
set_target_properties(larynth_runtime PROPERTIES EXPORT_NAME Larynth)
set_target_properties(larynth_interfaces PROPERTIES EXPORT_NAME Interfaces)

install(TARGETS larynth_command RUNTIME COMPONENT Command)
install(TARGETS larynth_module larynth_companion LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/larynth COMPONENT Runtime)
install(TARGETS larynth_register_modules RUNTIME DESTINATION ${CMAKE_INSTALL_LIBDIR}/larynth COMPONENT Runtime)
install(TARGETS larynth_face larynth_runtime larynth_interfaces EXPORT LarynthTargets
  LIBRARY COMPONENT Runtime NAMELINK_COMPONENT Development)

if(LARYNTH_PYTHON)
  set(python_package ${CMAKE_INSTALL_PREFIX}/${LARYNTH_PYTHON_DIR}/larynth)
  file(RELATIVE_PATH lib_from_python ${python_package} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(larynth_python PROPERTIES INSTALL_RPATH "\$ORIGIN/${lib_from_python}")
  install(TARGETS larynth_python LIBRARY DESTINATION ${LARYNTH_PYTHON_DIR}/larynth COMPONENT Python)
  list(TRANSFORM LARYNTH_PYTHON_FILES PREPEND python/larynth/)
  install(FILES ${LARYNTH_PYTHON_FILES} DESTINATION ${LARYNTH_PYTHON_DIR}/larynth COMPONENT Python)
endif()

# For programs that use it.
install(DIRECTORY Include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/larynth COMPONENT Development
  FILES_MATCHING PATTERN "*.h" PATTERN ModuleRuntime.h EXCLUDE)
install(FILES engine/Exception.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/larynth/engine COMPONENT Development)
install(FILES ${PROJECT_BINARY_DIR}/module/LarynthLib.tlb DESTINATION ${CMAKE_INSTALL_DATADIR}/larynth
  COMPONENT Development)

# find_package(Larynth CONFIG)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Larynth)
install(EXPORT LarynthTargets NAMESPACE Larynth:: FILE LarynthConfig.cmake DESTINATION ${package_dir}
  COMPONENT Development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/LarynthConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/LarynthConfigVersion.cmake DESTINATION ${package_dir} COMPONENT Development)

# pkg-config
set(pc_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pc ${pc_dir} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
file(RELATIVE_PATH include_from_prefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
file(RELATIVE_PATH lib_from_prefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
foreach(package larynth larynth-speech)
  configure_file(cmake/${package}.pc.in ${PROJECT_BINARY_DIR}/${package}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${package}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
endforeach()
