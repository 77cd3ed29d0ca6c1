# SPDX-License-Identifier: MIT
# Installs, moves the installed tree, and then uses nothing but that: examples built by way of the CMake package and by
# way of pkg-config, and the command. One of them is the program in the README, word for word.
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
file(READ ${README} readme)
file(READ ${EXAMPLES}/first_sound/main.cpp program)
string(REPLACE "// SPDX-License-Identifier: MIT\n" "```cpp\n" program "${program}")
string(FIND "${readme}" "${program}```" place)
if(place EQUAL -1)
  message(FATAL_ERROR "the README's program is not that of examples/first_sound")
endif()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first)
file(RENAME ${WORK}/first ${WORK}/prefix)
set(modules ${WORK}/prefix/${LIBDIR}/larynth/Larynth.so ${WORK}/prefix/${LIBDIR}/larynth/LarynthCompanion.so)

if(EXISTS ${WORK}/prefix/include/larynth/ModuleRuntime.h OR NOT EXISTS ${WORK}/prefix/include/larynth/Runtime.h)
  message(FATAL_ERROR "hosts get the headers that are for them, and no other")
endif()

# Runs a built example in a folder of its own and expects the vowel's files: 11000 samples and a header, one marker.
function(expect_vowel)
  file(MAKE_DIRECTORY ${WORK}/sound)
  run(${CMAKE_COMMAND} -E chdir ${WORK}/sound ${ARGN})
  file(SIZE ${WORK}/sound/vowel.wav size)
  file(READ ${WORK}/sound/vowel.txt labels)
  if(NOT size EQUAL 22044 OR NOT labels STREQUAL "0.000000\t0.997732\ta\n")
    message(FATAL_ERROR "${ARGN} wrote ${size} bytes and the labels ${labels}")
  endif()
  file(REMOVE_RECURSE ${WORK}/sound)
endfunction()

# find_package(Larynth CONFIG)
run(${CMAKE_COMMAND} -S ${EXAMPLES} -B ${WORK}/build
  -D CMAKE_PREFIX_PATH=${WORK}/prefix -D CMAKE_CXX_COMPILER=${COMPILER} -D CMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${WORK}/build)
expect_output("250 samples\n" ${WORK}/build/minimal_host ${modules})
expect_vowel(${WORK}/build/first_sound)
expect_output("0.000 s  ma\n0.200 s  ri\n0.399 s  na\n0.599 s  end\n" ${WORK}/build/marker_stream)
# Runs an example that writes one 16-bit sound under two names, which differ, or another sound than its table.
function(expect_other_sounds example one other)
  run(${CMAKE_COMMAND} -E chdir ${WORK} ${WORK}/build/${example} ${ARGN})
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${WORK}/${one} ${WORK}/${other} RESULT_VARIABLE differ
    ERROR_QUIET)
  file(SIZE ${WORK}/${one} size)
  file(SIZE ${WORK}/${other} other_size)
  if(NOT differ EQUAL 1 OR NOT size EQUAL other_size)
    message(FATAL_ERROR "${example}: ${one} has ${size} bytes, ${other} ${other_size}")
  endif()
endfunction()
expect_other_sounds(own_source own.wav standard.wav)
run(${WORK}/prefix/bin/larynth render ${EXAMPLES}/word_married.csv -o ${WORK}/married.wav)
expect_other_sounds(wave_table_voice voice.wav married.wav ${EXAMPLES}/word_married.csv)

# pkg-config
set(ENV{PKG_CONFIG_PATH} ${WORK}/prefix/${LIBDIR}/pkgconfig)
function(build_by_pkg_config package example)
  execute_process(COMMAND pkg-config --cflags --libs ${package}
    OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(flags UNIX_COMMAND "${FLAGS} ${flags}")
  run(${COMPILER} -std=c++20 ${EXAMPLES}/${example}/main.cpp -o ${WORK}/${example} ${flags})
endfunction()
build_by_pkg_config(larynth minimal_host)
build_by_pkg_config(larynth-speech first_sound)
set(ENV{LD_LIBRARY_PATH} ${WORK}/prefix/${LIBDIR})
expect_output("250 samples\n" ${WORK}/minimal_host ${modules})
expect_vowel(${WORK}/first_sound)
unset(ENV{LD_LIBRARY_PATH})

if(PYTHON)
  set(ENV{PYTHONPATH} ${WORK}/prefix/${PYTHON_DIR})
  expect_output("250\n" ${PYTHON} -B -c "from larynth import *\nprint(render(frames(length=250)).samples.size)")
endif()

# The programs find their library and their modules.
if(SPEECH)
  execute_process(COMMAND echo INIT COMMAND ${WORK}/prefix/lib/speech-dispatcher-modules/sd_larynth
    ${WORK}/prefix/etc/speech-dispatcher/modules/larynth.conf OUTPUT_VARIABLE answer COMMAND_ERROR_IS_FATAL ANY)
  if(NOT answer MATCHES "\n299 OK LOADED SUCCESSFULLY\n")
    message(FATAL_ERROR "the installed output module said: ${answer}")
  endif()
endif()
run(${WORK}/prefix/bin/larynth render ${EXAMPLES}/word_married.csv -o ${WORK}/word.raw)
file(SIZE ${WORK}/word.raw size)
if(NOT size EQUAL 12128)
  message(FATAL_ERROR "the installed command wrote ${size} bytes, expected 12128")
endif()
