# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# The test programs that run under Wine.

# Compiled often and run briefly.
add_library(pv_test_options INTERFACE)
target_link_libraries(pv_test_options INTERFACE pv_options)
target_compile_options(pv_test_options INTERFACE -O1)

# What they share: late-bound clients, fakes of host objects, views of the type library, the main
# function, and the headers that nearly every file starts with, compiled once for all.
file(GLOB_RECURSE sources CONFIGURE_DEPENDS support/*.cpp)
add_library(test_support STATIC EXCLUDE_FROM_ALL ${sources})
target_link_libraries(test_support PRIVATE pv_test_options PUBLIC pv_host pv_contract gtest)
set_source_files_properties(support/source_tree.cpp PROPERTIES COMPILE_DEFINITIONS
  PV_SOURCE_DIR="Z:${CMAKE_SOURCE_DIR}")
precompile(test_support <gtest/gtest.h> <functional> <map> <optional> <string> <vector>
  <com/automation.h> <tests/support/object.h>)

# The program <name>_tests, made of the folder tests/<name>.
function(add_windows_program name)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${name}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/${name}/(helper|help_viewer)/")
  add_executable(${name}_tests ${sources})
  target_link_libraries(${name}_tests PRIVATE test_support gdi32 user32)
  target_link_options(${name}_tests PRIVATE -static)
  add_dependencies(${name}_tests pvItems32)
endfunction()

function(add_windows_tests name)
  add_windows_program(${name})
  target_link_libraries(${name}_tests PRIVATE pv_test_options)
  target_compile_options(${name}_tests PRIVATE -Wno-array-bounds -Wno-stringop-overread)
  target_precompile_headers(${name}_tests REUSE_FROM test_support)
endfunction()

# The automation layer is tested with a class of its own, whose type library the program carries.
add_windows_tests(abi)
compile_idl(${CMAKE_CURRENT_SOURCE_DIR}/abi/probe.idl)
make_dispatch_tables(${CMAKE_CURRENT_SOURCE_DIR}/abi/probe.idl)
set_source_files_properties(abi/probe.rc PROPERTIES OBJECT_DEPENDS ${PV_GENERATED_DIR}/probe.tlb)
set_source_files_properties(${PV_GENERATED_DIR}/probe_i.c PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
set(dispatch_tables ${PV_GENERATED_DIR}/probe_dispatch.cpp ${PV_GENERATED_DIR}/pvItems32_dispatch.cpp)
set_source_files_properties(${dispatch_tables} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
target_sources(abi_tests PRIVATE abi/probe.rc ${PV_GENERATED_DIR}/probe.h
  ${PV_GENERATED_DIR}/probe_i.c ${dispatch_tables})

set_source_files_properties(abi/addresses_test.cpp PROPERTIES COMPILE_DEFINITIONS
  PV_PROCESSOR="${CMAKE_SYSTEM_PROCESSOR}")

add_windows_tests(automation)
add_windows_tests(dialogs)

# Found by the dialog tests in place of the platform's help viewer.
add_library(help_viewer MODULE dialogs/help_viewer/hhctrl.cpp)
set_target_properties(help_viewer PROPERTIES PREFIX "" OUTPUT_NAME hhctrl SUFFIX .ocx
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/help_viewer)
target_compile_definitions(help_viewer PRIVATE UNICODE _UNICODE)
target_link_libraries(help_viewer PRIVATE pv_options)
target_link_options(help_viewer PRIVATE -static -Wl,--kill-at)
add_dependencies(dialogs_tests help_viewer)

# Hosts whose threads are free-threaded, and a class of somebody else.
add_windows_tests(apartments)
target_sources(apartments_tests PRIVATE abi/sweep.cpp automation/txm/txm_support.cpp)
add_library(apartments_stranger MODULE apartments/helper/stranger.cpp
  apartments/helper/stranger.def)
set_target_properties(apartments_stranger PROPERTIES PREFIX ""
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
target_link_libraries(apartments_stranger PRIVATE pv_options uuid)
target_link_options(apartments_stranger PRIVATE -static -Wl,--kill-at -Wl,--enable-stdcall-fixup)
add_dependencies(apartments_tests apartments_stranger)

# A host that reaches the library in another process.
add_windows_tests(surrogate)
target_sources(surrogate_tests PRIVATE automation/txm/txm_support.cpp apartments/apartment.cpp
  apartments/platform.cpp)

# A call that is measured stays a call, though the program could know where it leads.
add_windows_program(bench)
target_link_libraries(bench_tests PRIVATE pv_options)
target_compile_options(bench_tests PRIVATE -fno-devirtualize -fno-devirtualize-speculatively)

# Saves under faults, and the other process that they need.
add_windows_tests(faults)
target_sources(faults_tests PRIVATE automation/items/item_support.cpp)
add_executable(faults_helper faults/helper/main.cpp)
target_link_libraries(faults_helper PRIVATE test_support)
target_link_options(faults_helper PRIVATE -static)
add_dependencies(faults_tests faults_helper)

add_windows_tests(hostile)

# The library as a part of the program: all its allocations go through the program's own functions.
add_windows_tests(memory)
target_link_libraries(memory_tests PRIVATE pv_library_fast pv_library pv_resources)

# Server and simulated transmitter over a serial line.
add_windows_tests(serial)
add_dependencies(serial_tests fluxor_server)

# Scripts and their events, in a host that is no part of the platform.
add_windows_tests(script_host)
