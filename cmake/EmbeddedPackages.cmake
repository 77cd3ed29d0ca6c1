# SPDX-License-Identifier: MIT
# What the build for another platform finds instead of packages for it: headers without a library, and the test framework's
# sources, both of the machine that builds. find_package() looks into this folder first.

find_path(LARYNTH_JSON_INCLUDE nlohmann/json.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(LARYNTH_CLI11_INCLUDE CLI/CLI.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/include)
file(CREATE_LINK ${LARYNTH_JSON_INCLUDE}/nlohmann ${PROJECT_BINARY_DIR}/include/nlohmann SYMBOLIC)
file(CREATE_LINK ${LARYNTH_CLI11_INCLUDE}/CLI ${PROJECT_BINARY_DIR}/include/CLI SYMBOLIC)
file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/cli11-config.cmake "
if(NOT TARGET CLI11::CLI11)
  add_library(CLI11::CLI11 INTERFACE IMPORTED)
endif()
")
file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/nlohmann_json-config.cmake "
if(NOT TARGET nlohmann_json::nlohmann_json)
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
endif()
")

find_path(LARYNTH_GTEST_SOURCES googlemock/CMakeLists.txt PATHS /usr/src/googletest NO_CMAKE_FIND_ROOT_PATH)
file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/gtest-config.cmake "
set(INSTALL_GTEST OFF)
add_subdirectory(${LARYNTH_GTEST_SOURCES} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
")
