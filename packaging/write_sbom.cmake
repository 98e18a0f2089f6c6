# SPDX-License-Identifier: GPL-3.0-or-later
# Writes the program's bill of materials (CycloneDX, JSON) of the table "In the program" of THIRD_PARTY.md:
#   cmake -D TABLE=THIRD_PARTY.md -D OUTPUT=corvane.cdx.json -D VERSION=1.0.0 -P write_sbom.cmake
# Each package with the version that it is built with, where dpkg knows it. Without a date and a number of its own: the same
# sources on the same system give the same file.
cmake_minimum_required(VERSION 3.25)

function(quoted result text)
  string(REPLACE "\\" "\\\\" text "${text}")
  string(REPLACE "\"" "\\\"" text "${text}")
  set(${result} "\"${text}\"" PARENT_SCOPE)
endfunction()

# set_in(VARIABLE TEXT MEMBER...): a member of the JSON object in a variable.
macro(set_in variable text)
  quoted(member "${text}")
  string(JSON ${variable} SET "${${variable}}" ${ARGN} "${member}")
endmacro()

# The exact version, which dpkg also knows of packages of several architectures; "" where it is not installed.
function(version_of package result)
  execute_process(COMMAND dpkg-query -W -f "\${Version}\n" ${package} OUTPUT_VARIABLE versions ERROR_QUIET
                  RESULT_VARIABLE failed)
  string(REGEX MATCH "^[^\n]+" version "${versions}")
  if(failed)
    set(version "")
  endif()
  set(${result} "${version}" PARENT_SCOPE)
endfunction()

file(READ ${TABLE} text)
# What CMake's lists and patterns would take for theirs.
string(REPLACE ";" "," text "${text}")
string(REGEX REPLACE "[][]" "" text "${text}")
if(NOT text MATCHES "## In the program\n(.*)\nThe Windows program")
  message(FATAL_ERROR "${TABLE} has no table of what is in the program")
endif()
string(REGEX MATCHALL "\n\\| [^\n]+" rows "${CMAKE_MATCH_1}")
set(system debian)
if(EXISTS /etc/os-release)
  file(STRINGS /etc/os-release system REGEX "^ID=")
  string(REGEX REPLACE "^ID=\"?([a-z0-9._-]+)\"?$" "\\1" system "${system}")
endif()

set(components "[]")
set(needed "[]")
set(count 0)
foreach(row IN LISTS rows)
  if(NOT row MATCHES "\n\\| ([^|]+) \\| ([^|]+) \\| ([^|]+) \\| ([^|]+) \\|" OR CMAKE_MATCH_1 STREQUAL "Library")
    continue()
  endif()
  set(name "${CMAKE_MATCH_1}")
  set(licence "${CMAKE_MATCH_3}")
  set(purpose "${CMAKE_MATCH_4}")
  string(REGEX MATCHALL "[a-z0-9][a-z0-9.+-]+" packages "${CMAKE_MATCH_2}")
  foreach(package IN LISTS packages)
    set(component "{\"type\": \"library\", \"licenses\": [{\"license\": {}}]}")
    set_in(component "${package}" bom-ref)
    set_in(component "${package}" name)
    set_in(component "${name}: ${purpose}" description)
    set_in(component "${licence}" licenses 0 license name)
    version_of(${package} version)
    if(version)
      set_in(component "${version}" version)
      string(REPLACE "+" "%2B" escaped "${version}")
      string(REPLACE ":" "%3A" escaped "${escaped}")
      set_in(component "pkg:deb/${system}/${package}@${escaped}" purl)
    endif()
    string(JSON components SET "${components}" ${count} "${component}")
    string(JSON needed SET "${needed}" ${count} "\"${package}\"")
    math(EXPR count "${count} + 1")
  endforeach()
endforeach()
if(count EQUAL 0)
  message(FATAL_ERROR "${TABLE} names no library")
endif()

set(bill "{\"bomFormat\": \"CycloneDX\", \"specVersion\": \"1.5\", \"version\": 1, \"metadata\": {\"component\": {\"type\": \"application\",
  \"bom-ref\": \"corvane\", \"name\": \"corvane\", \"licenses\": [{\"license\": {\"id\": \"GPL-3.0-or-later\"}}]}},
  \"dependencies\": [{\"ref\": \"corvane\"}]}")
set_in(bill "${VERSION}" metadata component version)
string(JSON bill SET "${bill}" components "${components}")
string(JSON bill SET "${bill}" dependencies 0 dependsOn "${needed}")
file(WRITE ${OUTPUT} "${bill}\n")
