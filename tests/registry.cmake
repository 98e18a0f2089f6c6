# SPDX-License-Identifier: GPL-3.0-or-later
# What ctest runs, by labels: unit, contract, story, fuzz, memory, shipped, rules, format, tidy; asan and wine for the portable
# core once more, windows for what needs the desktop of Windows, setup for what others need. Each test's REQUIRED_FILES are
# what it reads: ./check does not run again what passed with the same content of these.

set(python /usr/bin/python3)  # the system's, which its packages are for
set(CORVANE_TEST_PREFIX "" CACHE STRING "What the names of the tests begin with, where a build has them once more")
set(tools ${PROJECT_SOURCE_DIR}/tools)
set(tests ${PROJECT_SOURCE_DIR}/tests)
set(tested_data ${PROJECT_SOURCE_DIR}/PANELSET ${PROJECT_SOURCE_DIR}/samples ${tests}/data ${tests}/golden ${tests}/contract)
set(session ${python} ${tools}/session.py)
set(patient nice -n 10)  # what only computes gives way to what is measured in milliseconds

# corvane_register(NAME SECONDS LABELS COMMAND... READS file... [COST longest-first] [PROCESSORS n] [ENVIRONMENT...]
#                  [NEEDS setup...] [SETS_UP what] [ALONE_WITH what])
function(corvane_register name seconds labels)
  cmake_parse_arguments(ARG "" "COST;PROCESSORS;SETS_UP;ALONE_WITH" "COMMAND;READS;ENVIRONMENT;NEEDS" ${ARGN})
  set(name ${CORVANE_TEST_PREFIX}${name})
  add_test(NAME ${name} COMMAND ${ARG_COMMAND} WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
  set_tests_properties(${name} PROPERTIES LABELS "${labels}" TIMEOUT ${seconds} REQUIRED_FILES "${ARG_READS}")
  foreach(pair COST=COST PROCESSORS=PROCESSORS ENVIRONMENT=ENVIRONMENT NEEDS=FIXTURES_REQUIRED SETS_UP=FIXTURES_SETUP
               ALONE_WITH=RESOURCE_LOCK)
    string(REPLACE "=" ";" pair ${pair})
    list(POP_FRONT pair given property)
    if(ARG_${given})
      set_property(TEST ${name} PROPERTY ${property} ${ARG_${given}})
    endif()
  endforeach()
endfunction()

# A GoogleTest program, in one process or in several; its results lie in reports/ of the build.
function(corvane_register_program name desktop shards seconds label)
  if(CORVANE_FUZZ)
    return()  # built for the targets' sake
  endif()
  foreach(value "shards;1" "seconds;300" "label;unit")
    list(GET value 0 variable)
    if(NOT ${variable})
      list(GET value 1 ${variable})
    endif()
  endforeach()
  set(command $<TARGET_FILE:test_${name}>)
  set(needs)
  if(WIN32)
    set(label ${label} wine)
    set(command ${python} ${tools}/wine.py $<TARGET_FILE:test_${name}>)
    set(needs wine)
    set(alone ALONE_WITH wine)
    set(drive Z:)
    if(desktop)
      list(APPEND label windows)
    endif()
  elseif(CORVANE_TEST_PREFIX)
    string(REPLACE ":" "" build ${CORVANE_TEST_PREFIX})
    list(APPEND label ${build})
    set(command ${patient} ${command})
  endif()
  if(desktop)
    # What takes too long is ended before ctest would, which leaves no time to tidy up.
    set(command ${session} --clean --seconds ${seconds} -- ${command})
    list(APPEND needs desktop)
    math(EXPR seconds "${seconds} + 60")
  endif()
  foreach(shard RANGE 1 ${shards})
    set(test ${name})
    set(environment)
    if(shards GREATER 1)
      set(test ${name}.${shard})
      math(EXPR index "${shard} - 1")
      set(environment GTEST_TOTAL_SHARDS=${shards} GTEST_SHARD_INDEX=${index})
    endif()
    corvane_register(${test} ${seconds} "${label}" COMMAND ${command}
      READS $<TARGET_FILE:test_${name}> ${tested_data}
      ENVIRONMENT GTEST_OUTPUT=xml:${drive}${CMAKE_BINARY_DIR}/reports/${test}.xml ${environment}
      NEEDS ${needs} COST ${seconds} ${alone})
  endforeach()
endfunction()

# All others are scripts that say "PASS name", "FAIL name: why" and "SKIP name: why", a line each.

function(corvane_register_stories folder labels)
  cmake_parse_arguments(ARG "" "" "OPTIONS;MORE" ${ARGN})
  file(GLOB files CONFIGURE_DEPENDS ${tests}/e2e/${folder}/*.py)
  list(FILTER files EXCLUDE REGEX __init__)
  foreach(file ${files})
    get_filename_component(stem ${file} NAME_WE)
    corvane_register(story:${stem} 900 "${labels}"
      COMMAND ${python} ${tests}/e2e/run.py --workers 1 --file ${stem} ${ARG_OPTIONS} $<TARGET_FILE:corvane>
      READS ${file} $<TARGET_FILE:corvane> ${PROJECT_SOURCE_DIR}/PANELSET ${PROJECT_SOURCE_DIR}/samples ${tests}/e2e ${tools}
      ${ARG_MORE})
  endforeach()
endfunction()

function(corvane_register_rules)
  set(text ${PROJECT_SOURCE_DIR}/src ${tests} ${tools} ${PROJECT_SOURCE_DIR}/docs ${PROJECT_SOURCE_DIR}/packaging
      ${PROJECT_SOURCE_DIR}/CMakeLists.txt ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md)
  foreach(rule machine rooms house calls thread_reports runner other_systems)
    corvane_register(rules:${rule} 180 rules COMMAND ${python} ${tests}/rules/${rule}.py READS ${text})
  endforeach()
  corvane_register(rules:book 180 rules COMMAND ${python} ${tests}/rules/book.py --check READS ${text})
  corvane_register(rules:built 180 rules COMMAND ${python} ${tests}/rules/built.py ${CMAKE_BINARY_DIR}
                   READS ${tests})
  set(code ${PROJECT_SOURCE_DIR}/src ${tests} ${PROJECT_SOURCE_DIR}/bench)
  corvane_register(format 180 format COMMAND ${python} ${tests}/rules/style/format.py
                   READS ${code} ${PROJECT_SOURCE_DIR}/.clang-format)
  corvane_register(tidy 900 tidy COMMAND ${patient} ${python} ${tests}/rules/style/tidy.py ${CMAKE_BINARY_DIR}
                   READS ${code} ${PROJECT_SOURCE_DIR}/.clang-tidy COST 100)
endfunction()

function(corvane_register_shipped)
  set(programs $<TARGET_FILE:corvane> $<TARGET_FILE:corvane-skin>)
  corvane_register(shipped:samples 180 shipped COMMAND ${python} ${tools}/samples/verify.py
                   READS ${PROJECT_SOURCE_DIR}/samples ${tools}/samples)
  corvane_register(shipped:skins 180 shipped COMMAND ${python} ${tools}/skin/verify.py
                   READS ${PROJECT_SOURCE_DIR}/PANELSET ${tools}/skin)
  corvane_register(shipped:installed 180 shipped COMMAND ${python} ${tests}/package/installed.py ${CMAKE_BINARY_DIR}
                   READS ${programs} ${PROJECT_SOURCE_DIR}/PANELSET ${PROJECT_SOURCE_DIR}/docs/manual
                         ${PROJECT_SOURCE_DIR}/packaging ${tests}/package ${PROJECT_SOURCE_DIR}/THIRD_PARTY.md)
  corvane_register(shipped:options 180 shipped COMMAND ${python} ${tests}/package/options.py ${CMAKE_BINARY_DIR}
                   READS ${programs} ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/packaging ${tests}/package)
  corvane_register(shipped:hardened 180 shipped COMMAND ${python} ${tests}/package/hardened.py ${CMAKE_BINARY_DIR}
                   READS ${programs} ${PROJECT_SOURCE_DIR}/cmake ${tests}/package)
endfunction()

# What others need: where it does not start, they are not run and have failed.
if(WIN32)
  corvane_register(wine_starts 300 "setup;wine" COMMAND ${python} ${tools}/wine.py cmd /c ver
                   READS ${tools}/wine.py SETS_UP wine ALONE_WITH wine)
endif()
if(CORVANE_DESKTOP)
  set(labels setup)
  if(WIN32)
    set(labels setup windows)
  endif()
  corvane_register(desktop_starts 120 "${labels}" COMMAND ${session} -- true
                   READS ${tools}/session.py SETS_UP desktop)
  if(WIN32)
    corvane_register_stories(windows_stories "story;windows" OPTIONS --windows
                             MORE ALONE_WITH wine NEEDS wine desktop)
    corvane_register(shipped:hardened 180 "shipped;windows"
                     COMMAND ${python} ${tests}/package/hardened.py ${CMAKE_BINARY_DIR}
                     READS $<TARGET_FILE:corvane> ${tests}/package)
  else()
    corvane_register_rules()
    corvane_register_shipped()
    corvane_register_stories(stories story MORE NEEDS desktop)
    corvane_register(memory 1200 memory COMMAND ${patient} ${python} ${tests}/memcheck --sample --workers 2
                     READS $<TARGET_FILE:corvane> ${PROJECT_SOURCE_DIR}/PANELSET ${PROJECT_SOURCE_DIR}/samples ${tests}/e2e ${tools}
                           ${tests}/memcheck ${tests}/memcheck.supp
                     NEEDS desktop PROCESSORS 2 COST 1000)
  endif()
endif()
