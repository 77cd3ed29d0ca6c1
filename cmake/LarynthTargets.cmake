# SPDX-License-Identifier: MIT

# How every target of the project is compiled. Requirements sit on targets; nothing is set globally.

# The same bits from every compiler at every level: no contraction of a·b + c, no reassociation.
add_library(larynth_options INTERFACE)
target_compile_features(larynth_options INTERFACE cxx_std_20)
target_compile_options(larynth_options INTERFACE -ffp-contract=off -fno-fast-math)
# Each function at the beginning of a cache line: where the linker happens to put it changes the time of a sample that
# comes through the interfaces by a twentieth.
target_compile_options(larynth_options INTERFACE -falign-functions=64)
if(LARYNTH_RUNTIME STREQUAL windows)
  # The compiler takes its stack for aligned to 32 and 64 bytes where the system gives it 16; and what is made of its
  # libraries stands alone.
  target_compile_options(larynth_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wa,-muse-unaligned-vector-move>)
  target_link_options(larynth_options INTERFACE -static)
endif()
target_include_directories(larynth_options INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/include)

# Warnings are this project's own affair: never exported.
option(LARYNTH_WERROR "Treat warnings as errors" OFF)
add_library(larynth_warnings INTERFACE)
target_compile_options(larynth_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Woverloaded-virtual -Wundef
  # gcc 12 sees overlapping or endless copies in "text" + std::string, where there are none.
  "$<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict;-Wno-stringop-overflow>"
  $<$<BOOL:${LARYNTH_WERROR}>:-Werror>)

# A shared object names nothing that is nowhere; but where clang's sanitizers watch, they stand in the program.
set(LARYNTH_NO_UNDEFINED -Wl,--no-undefined)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang AND CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
  set(LARYNTH_NO_UNDEFINED)
endif()

# Whether there are shared objects, which a room can become a part of by being compiled for that.
set(LARYNTH_SHARED ON)
if(NOT LARYNTH_RUNTIME STREQUAL posix)
  set(LARYNTH_SHARED OFF)
endif()

function(larynth_configure target)
  target_link_libraries(${target} PRIVATE larynth_options larynth_warnings)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ${LARYNTH_SHARED})
endfunction()

# A room: a folder's sources as one static library. Each module links a copy of its own.
function(larynth_room target)
  add_library(${target} STATIC ${ARGN})
  larynth_configure(${target})
endfunction()

# A component module: a shared object that exports what module.version (on Windows module.def) lists and nothing else, and
# uses its own resources whatever other modules the process has in its global scope (-Bsymbolic). Nobody in it calls the
# entry points, so two of them are asked for by name. Of an embedded runtime it is a part: what every module defines bears
# its name there.
#   larynth_module(larynth_companion LarynthCompanion CompanionClasses.cpp …)
function(larynth_module target name)
  if(LARYNTH_RUNTIME STREQUAL embedded)
    larynth_room(${target} ${ARGN} ${PROJECT_SOURCE_DIR}/module/EntryPoints.cpp)
    target_compile_definitions(${target} PRIVATE ClassTable=${name}ClassTable HasTypeLibrary=${name}HasTypeLibrary
      DllGetClassObject=${name}GetClassObject DllCanUnloadNow=${name}CanUnloadNow)
    return()
  endif()
  add_library(${target} MODULE ${ARGN})
  larynth_configure(${target})
  set_target_properties(${target} PROPERTIES
    PREFIX ""
    OUTPUT_NAME ${name}
    LIBRARY_OUTPUT_DIRECTORY ${LARYNTH_MODULE_DIR})
  if(LARYNTH_RUNTIME STREQUAL windows)
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/module/module.def)
    target_link_options(${target} PRIVATE -Wl,--kill-at)
    return()
  endif()
  set(version_script ${PROJECT_SOURCE_DIR}/module/module.version)
  target_link_options(${target} PRIVATE ${LARYNTH_NO_UNDEFINED} -Wl,-Bsymbolic
    -Wl,-u,DllGetClassObject -Wl,-u,DllRegisterServer -Wl,--version-script=${version_script})
  set_target_properties(${target} PROPERTIES LINK_DEPENDS ${version_script})
endfunction()

# The tests of one room, run as one process. The registration store is one that does not exist: a developer's own must not
# matter. THREADS stands for tests that start threads: the thread sanitizer watches them.
function(larynth_test target)
  cmake_parse_arguments(PARSE_ARGV 1 arg THREADS "" "")
  add_executable(${target} ${arg_UNPARSED_ARGUMENTS})
  larynth_configure(${target})
  target_link_libraries(${target} PRIVATE GTest::gmock GTest::gtest_main)
  target_precompile_headers(${target} REUSE_FROM larynth_test_headers)
  target_compile_definitions(${target} PRIVATE LARYNTH_TEST_DIR="${CMAKE_CURRENT_BINARY_DIR}")
  add_test(NAME ${target} COMMAND ${target} --gtest_brief=1)
  set_tests_properties(${target} PROPERTIES
    ENVIRONMENT LARYNTH_REGISTRY=${CMAKE_CURRENT_BINARY_DIR}/none/registry.db)
  if(LARYNTH_RUNTIME STREQUAL windows)
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/windows/Apartment.cpp)
    target_link_libraries(${target} PRIVATE larynth_interfaces ole32)
    set_tests_properties(${target} PROPERTIES SKIP_RETURN_CODE 77)
  endif()
  if(arg_THREADS)
    set_tests_properties(${target} PROPERTIES LABELS threads)
    add_dependencies(larynth_thread_tests ${target})
  endif()
endfunction()
