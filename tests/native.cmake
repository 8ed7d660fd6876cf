# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# The tests of src/core and of the simulated transmitter, and the fuzzer.

# What the fuzzer does with its inputs; the unit tests do it with the inputs that are kept.
file(GLOB sources CONFIGURE_DEPENDS fuzz/*.cpp)
list(REMOVE_ITEM sources ${CMAKE_CURRENT_SOURCE_DIR}/fuzz/fuzzer.cpp)
add_library(fuzz_cases STATIC ${sources})
target_link_libraries(fuzz_cases PUBLIC pv_core)
if(PV_FUZZ)
  add_executable(fuzz_targets fuzz/fuzzer.cpp)
  target_link_libraries(fuzz_targets PRIVATE fuzz_cases)
  target_link_options(fuzz_targets PRIVATE -fsanitize=fuzzer)
endif()

file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/examples/simulator/*.cpp)
list(REMOVE_ITEM sources ${CMAKE_SOURCE_DIR}/examples/simulator/main.cpp)
add_library(fluxor_device STATIC ${sources})
target_link_libraries(fluxor_device PUBLIC pv_options)

file(GLOB_RECURSE sources CONFIGURE_DEPENDS unit/*.cpp)
add_executable(unit_tests ${sources})
target_link_libraries(unit_tests PRIVATE pv_core fuzz_cases fluxor_device gtest_main)
target_precompile_headers(unit_tests PRIVATE <gtest/gtest.h> <algorithm> <cmath> <optional> <random>
  <string> <string_view> <vector>)
# Walks through 16 million texts. Headers are compiled beforehand without optimization.
set_source_files_properties(unit/access/password_code_test.cpp PROPERTIES COMPILE_OPTIONS -O1
  SKIP_PRECOMPILE_HEADERS ON)
target_compile_definitions(unit_tests PRIVATE
  PV_FUZZ_CASES_DIR="${CMAKE_CURRENT_SOURCE_DIR}/fuzz/cases"
  PV_RESOURCE_DIR="${CMAKE_SOURCE_DIR}/resources"
  PV_EXAMPLE_DATA_DIR="${CMAKE_SOURCE_DIR}/examples/data")
