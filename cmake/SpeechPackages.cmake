# SPDX-License-Identifier: MIT
# What speech from text needs. Without it everything else is built all the same.

find_package(EXPAT QUIET)
find_path(LARYNTH_FLITE_INCLUDE flite/flite.h)
set(LARYNTH_FLITE_LIBRARIES)  # the front end alone: no voice
set(flite_found ${LARYNTH_FLITE_INCLUDE})
foreach(part flite_usenglish flite_cmulex flite)
  find_library(LARYNTH_LIB_${part} ${part})
  mark_as_advanced(LARYNTH_LIB_${part})
  list(APPEND LARYNTH_FLITE_LIBRARIES ${LARYNTH_LIB_${part}})
  if(NOT LARYNTH_LIB_${part})
    set(flite_found FALSE)
  endif()
endforeach()
mark_as_advanced(LARYNTH_FLITE_INCLUDE)

set(speech_packages ON)
if(NOT flite_found OR NOT EXPAT_FOUND)
  set(speech_packages OFF)
endif()
option(LARYNTH_SPEECH "Build speech from text" ${speech_packages})
if(LARYNTH_SPEECH AND NOT speech_packages)
  message(FATAL_ERROR "LARYNTH_SPEECH needs flite (flite1-dev) and expat (libexpat1-dev)")
elseif(NOT speech_packages)
  message(STATUS "Speech from text is left out: flite (flite1-dev) or expat (libexpat1-dev) was not found")
elseif(NOT LARYNTH_SPEECH)
  message(STATUS "Speech from text is left out: LARYNTH_SPEECH is off")
endif()
