# cmake -DROOT=folder -DOUTPUT=header -P InterfaceHash.cmake -- HEADER...
#
# Writes the header corvane/base/InterfaceHash.h: a hash over the declarations of the public headers named, which are paths
# below ROOT. Whole-line comments, comments behind code and blank space don't count, so that the hash moves with what a
# compiler sees. What can't be told apart safely, such as // behind a text in quotes, counts: a hash that moves without need
# costs a new build of the plug-ins, one that doesn't move costs a crash.
cmake_minimum_required(VERSION 3.25)

set(headers)
set(taken FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE ${last})
  if(taken)
    list(APPEND headers ${CMAKE_ARGV${i}})
  elseif(CMAKE_ARGV${i} STREQUAL "--")
    set(taken TRUE)
  endif()
endforeach()
if(NOT headers)
  message(FATAL_ERROR "InterfaceHash.cmake: name the public headers behind \"--\"")
endif()

list(SORT headers)
set(all "")
foreach(header IN LISTS headers)
  file(READ "${ROOT}/${header}" text)
  string(REGEX REPLACE "(^|\n)([^\"/\n]*)//[^\n]*" "\\1\\2" text "${text}")
  string(REGEX REPLACE "[ \t\r\n]+" "" text "${text}")
  string(SHA256 hash "${text}")
  string(APPEND all "${header} ${hash}\n")
endforeach()
string(SHA256 hash "${all}")
string(SUBSTRING ${hash} 0 12 hash)

set(text "// Written by the build: a hash over all public declarations.
#pragma once

#define CORVANE_INTERFACE_HASH \"${hash}\"
")
set(old "")
if(EXISTS "${OUTPUT}")
  file(READ "${OUTPUT}" old)
endif()
# An unchanged hash leaves the header alone, so nothing is built again.
if(NOT old STREQUAL text)
  file(WRITE "${OUTPUT}" "${text}")
endif()
