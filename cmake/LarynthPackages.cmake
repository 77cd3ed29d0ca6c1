# SPDX-License-Identifier: MIT
# Debian packages by cpack, one for each component of cmake/LarynthInstall.cmake.

find_program(LARYNTH_GZIP gzip REQUIRED)
set(LARYNTH_MAINTAINER "The Larynth developers <maintainers@larynth.invalid>" CACHE STRING
  "Who answers for the packages: a name and an address")
set(packages ${PROJECT_BINARY_DIR}/packages)
set(modules ${CMAKE_INSTALL_FULL_LIBDIR}/larynth)
cmake_path(GET LARYNTH_SYSTEM_STORE PARENT_PATH store_folder)

set(CPACK_GENERATOR DEB)
set(CPACK_SET_DESTDIR ON)  # one path does not lie below the prefix
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has a line of its own
set(CPACK_PACKAGE_CONTACT ${LARYNTH_MAINTAINER})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL Runtime Command Development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(package_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# What dpkg asks the packages' scripts to do.
foreach(script postinst prerm postrm)
  configure_file(packaging/${script}.in ${packages}/${script} @ONLY)
  file(CHMOD ${packages}/${script} PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endforeach()

# Licence and history, which every package has in a folder of its own.
file(STRINGS LICENSE licence)
string(REGEX MATCH "Copyright \\(c\\) ([^;]+)" copyright "${licence}")
set(copyright ${CMAKE_MATCH_1})
file(READ LICENSE terms)
string(REGEX REPLACE "^.*(Permission is hereby)" "\\1" terms "${terms}")
string(REGEX REPLACE "\n\n" "\n.\n" terms "${terms}")
string(REGEX REPLACE "\n([^\n])" "\n \\1" terms " ${terms}")
configure_file(packaging/copyright.in ${packages}/copyright @ONLY)
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(packaging/changelog.Debian.in ${packages}/changelog.Debian @ONLY)
configure_file(CHANGELOG.md ${packages}/changelog COPYONLY)
foreach(history changelog changelog.Debian)
  execute_process(COMMAND ${LARYNTH_GZIP} -9nf ${packages}/${history} COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# One package: its component, name, section, further dependencies and what it is.
function(larynth_package component name section depends summary description)
  string(TOUPPER ${component} key)
  install(FILES ${packages}/copyright ${packages}/changelog.gz ${packages}/changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
endfunction()

set(runtime liblarynth${PROJECT_VERSION_MAJOR})
set(same_runtime "${runtime} (= ${package_version})")
larynth_package(Runtime ${runtime} libs "" "formant speech synthesizer - runtime and modules"
  "Larynth renders speech from frames of formants, bandwidths and amplitudes.
Every role of its model is a component that a program can replace. This
package has the component runtime and the two modules, and registers them
for all users.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${packages}/postinst ${packages}/prerm ${packages}/postrm ${PROJECT_SOURCE_DIR}/packaging/triggers)
larynth_package(Command larynth sound "${same_runtime}" "formant speech synthesizer - command"
  "The command larynth speaks English text and turns tables of frames into sound
files. Manual pages and completion for bash and zsh are included.")
set(CPACK_DEBIAN_COMMAND_PACKAGE_SUGGESTS python3-larynth)  # for larynth plot
larynth_package(Development liblarynth-dev libdevel "${same_runtime}" "formant speech synthesizer - development files"
  "Headers, CMake and pkg-config files and the type library, for programs that use
Larynth and for components of one's own.")
if(LARYNTH_PYTHON)
  list(APPEND CPACK_COMPONENTS_ALL Python)
  math(EXPR next_minor "${Python_VERSION_MINOR} + 1")
  set(this_python "python3 (>= 3.${Python_VERSION_MINOR}~), python3 (<< 3.${next_minor})")
  larynth_package(Python python3-larynth python "${same_runtime}, ${this_python}, python3-numpy"
    "formant speech synthesizer - Python 3 package"
    "Frames and samples are arrays of numpy: for stimuli and speech data. The
transfer function of the tract and every signal inside come as arrays, too.")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS python3-matplotlib)
  foreach(script postinst prerm)
    configure_file(packaging/python.${script} ${packages}/python/${script} COPYONLY)
    file(CHMOD ${packages}/python/${script} PERMISSIONS
      OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  endforeach()
  set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${packages}/python/postinst ${packages}/python/prerm)
endif()
if(LARYNTH_SPEECH)
  list(APPEND CPACK_COMPONENTS_ALL SpeechModule)
  larynth_package(SpeechModule speech-dispatcher-larynth sound "${same_runtime}, speech-dispatcher (>= 0.11)"
    "Speech Dispatcher - module for the synthesizer Larynth"
    "Screen readers and other clients of Speech Dispatcher speak with Larynth by
way of this output module.")
  file(WRITE ${packages}/conffiles "${LARYNTH_SPEECHD_CONFIGURATION}/larynth.conf\n")
  set(CPACK_DEBIAN_SPEECHMODULE_PACKAGE_CONTROL_EXTRA ${packages}/conffiles)
endif()
include(CPack)
