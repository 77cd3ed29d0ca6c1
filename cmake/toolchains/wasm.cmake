# SPDX-License-Identifier: MIT
# WebAssembly by Debian's emscripten; programs run under node.
find_program(LARYNTH_EMCC emcc REQUIRED)
file(REAL_PATH ${LARYNTH_EMCC} emcc)
cmake_path(GET emcc PARENT_PATH emscripten)
set(CMAKE_CROSSCOMPILING_EMULATOR node --no-experimental-fetch)
include(${emscripten}/cmake/Modules/Platform/Emscripten.cmake)
# Vectors of two numbers; exceptions end at the interfaces, so that they must be caught.
string(APPEND CMAKE_CXX_FLAGS_INIT " -msimd128 -fexceptions")
string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT " -fexceptions -sALLOW_MEMORY_GROWTH=1")
