# SPDX-License-Identifier: MIT
# Installs, moves the installed tree, and then uses nothing but that: a host built by way of the CMake package and by
# way of pkg-config, and the command. The host is the one in the README, word for word.
cmake_minimum_required(VERSION 3.25)

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(expect_output expected)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  if(NOT output STREQUAL expected)
    message(FATAL_ERROR "${ARGN}\n  said: ${output}\n  expected: ${expected}")
  endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
file(COPY ${CLIENT}/ DESTINATION ${WORK}/client)
file(READ ${README} readme)
set(fence "```cpp\n")
string(FIND "${readme}" "${fence}" begin)
if(begin EQUAL -1)
  message(FATAL_ERROR "the README has no program")
endif()
string(LENGTH "${fence}" fence_length)
math(EXPR begin "${begin} + ${fence_length}")
string(SUBSTRING "${readme}" ${begin} -1 program)
string(FIND "${program}" "```" length)
string(SUBSTRING "${program}" 0 ${length} program)
file(WRITE ${WORK}/client/main.cpp "${program}")

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first)
file(RENAME ${WORK}/first ${WORK}/prefix)
set(modules ${WORK}/prefix/${LIBDIR}/larynth/Larynth.so ${WORK}/prefix/${LIBDIR}/larynth/LarynthCompanion.so)

if(EXISTS ${WORK}/prefix/include/larynth/ModuleRuntime.h OR NOT EXISTS ${WORK}/prefix/include/larynth/Runtime.h)
  message(FATAL_ERROR "hosts get the headers that are for them, and no other")
endif()

# find_package(Larynth CONFIG)
run(${CMAKE_COMMAND} -S ${WORK}/client -B ${WORK}/build
  -D CMAKE_PREFIX_PATH=${WORK}/prefix -D CMAKE_CXX_COMPILER=${COMPILER} -D CMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${WORK}/build)
expect_output("250 samples\n" ${WORK}/build/client ${modules})

# pkg-config
set(ENV{PKG_CONFIG_PATH} ${WORK}/prefix/${LIBDIR}/pkgconfig)
execute_process(COMMAND pkg-config --cflags --libs larynth
  OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${FLAGS} ${flags}")
run(${COMPILER} -std=c++20 ${WORK}/client/main.cpp -o ${WORK}/by-pkg-config ${flags})
set(ENV{LD_LIBRARY_PATH} ${WORK}/prefix/${LIBDIR})
expect_output("250 samples\n" ${WORK}/by-pkg-config ${modules})
unset(ENV{LD_LIBRARY_PATH})

# The programs find their library and their modules.
if(SPEECH)
  execute_process(COMMAND echo INIT COMMAND ${WORK}/prefix/lib/speech-dispatcher-modules/sd_larynth
    ${WORK}/prefix/etc/speech-dispatcher/modules/larynth.conf OUTPUT_VARIABLE answer COMMAND_ERROR_IS_FATAL ANY)
  if(NOT answer MATCHES "\n299 OK LOADED SUCCESSFULLY\n")
    message(FATAL_ERROR "the installed output module said: ${answer}")
  endif()
endif()
run(${WORK}/prefix/bin/larynth render ${EXAMPLE} -o ${WORK}/word.raw)
file(SIZE ${WORK}/word.raw size)
if(NOT size EQUAL 12128)
  message(FATAL_ERROR "the installed command wrote ${size} bytes, expected 12128")
endif()
