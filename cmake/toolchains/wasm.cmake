# SPDX-License-Identifier: MIT
# WebAssembly by Debian's emscripten; programs run under node.
find_program(LARYNTH_EMCC emcc REQUIRED)
file(REAL_PATH ${LARYNTH_EMCC} emcc)
cmake_path(GET emcc PARENT_PATH emscripten)
set(CMAKE_CROSSCOMPILING_EMULATOR node --no-experimental-fetch)
include(${emscripten}/cmake/Modules/Platform/Emscripten.cmake)
# Vectors of two numbers. Exceptions end at the interfaces, so that they must be caught.
cmake_path(SET wasm NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../wasm)
set(CMAKE_CXX_FLAGS_INIT "-msimd128 -fexceptions -include ${wasm}/StandardLibrary.h")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fexceptions -sALLOW_MEMORY_GROWTH=1")
