# The DLL, built from the type library up, and the test programs that run under Wine.

find_program(WIDL i686-w64-mingw32-widl REQUIRED)
file(GLOB stdole_dirs /usr/lib/*/wine/i386-windows)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_file(STDOLE2_TLB stdole2.tlb PATHS ${stdole_dirs} NO_CMAKE_FIND_ROOT_PATH REQUIRED)
get_filename_component(stdole_dir ${STDOLE2_TLB} DIRECTORY)

set(contract ${CMAKE_SOURCE_DIR}/typelib/pvItems32.idl)
set(generated ${CMAKE_BINARY_DIR}/generated)
set(widl_options -I${CMAKE_SOURCE_DIR}/typelib/shim -L${stdole_dir})
file(MAKE_DIRECTORY ${generated})
add_custom_command(
  OUTPUT ${generated}/pvItems32.tlb ${generated}/pvItems32.h ${generated}/pvItems32_i.c
  COMMAND ${WIDL} ${widl_options} -t -o ${generated}/pvItems32.tlb ${contract}
  COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tools/typelib_help.py
    ${contract} ${generated}/pvItems32.tlb
  COMMAND ${WIDL} ${widl_options} -h -o ${generated}/pvItems32.h ${contract}
  COMMAND ${WIDL} ${widl_options} -u -o ${generated}/pvItems32_i.c ${contract}
  DEPENDS ${contract} typelib/shim/oaidl.idl typelib/shim/ocidl.idl typelib/shim/unknwn.idl
    tools/typelib_help.py
  COMMENT "Compiling the type library")
add_custom_target(contract DEPENDS ${generated}/pvItems32.tlb)

add_library(pv_contract STATIC ${generated}/pvItems32_i.c)
add_dependencies(pv_contract contract)
target_include_directories(pv_contract SYSTEM PUBLIC ${generated})
target_compile_definitions(pv_contract PUBLIC UNICODE _UNICODE _WIN32_WINNT=0x0601 WINVER=0x0601)
target_link_libraries(pv_contract PUBLIC oleaut32 ole32 uuid)

set(CMAKE_RC_FLAGS "-c 65001 -I ${CMAKE_SOURCE_DIR}/resources -I ${generated}")
file(GLOB resource_scripts CONFIGURE_DEPENDS resources/*.rc dialogs/*.rc)
set_source_files_properties(${resource_scripts} PROPERTIES OBJECT_DEPENDS
  "${generated}/pvItems32.tlb;${CMAKE_SOURCE_DIR}/resources/version.h")

file(GLOB platform_sources CONFIGURE_DEPENDS com/*.cpp platform/*.cpp dialogs/*.cpp module/*.cpp)
list(REMOVE_ITEM platform_sources ${CMAKE_SOURCE_DIR}/com/automation_error.cpp
  ${CMAKE_SOURCE_DIR}/com/key_fold.cpp)

# Objects of their own, so that a test program can be made of them, too.
add_library(pv_library OBJECT ${platform_sources} ${class_sources})
target_link_libraries(pv_library PUBLIC pv_options pv_plain pv_contract
  comctl32 comdlg32 gdi32 shell32 version)
target_compile_options(pv_library PRIVATE -fstack-protector-strong)
target_link_options(pv_library PUBLIC -fstack-protector-strong)

if(PV_COVERAGE)
  target_compile_options(pv_library PRIVATE --coverage -O0)
  target_link_options(pv_library PUBLIC --coverage)
endif()

# What nearly every file of a target starts with, compiled once. The compiler then no longer knows the
# platform's headers from ours and warns of bounds inside them, where short literals are copied.
function(precompile target)
  target_precompile_headers(${target} PRIVATE ${ARGN})
  target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overread)
endfunction()

precompile(pv_library <algorithm> <functional> <map> <memory> <optional> <string> <string_view> <vector>
  com/automation.h <pvItems32.h>)

add_library(pvItems32 SHARED ${resource_scripts} module/pvItems32.def)
set_target_properties(pvItems32 PROPERTIES PREFIX "" LINKER_LANGUAGE CXX)
target_link_libraries(pvItems32 PRIVATE pv_library)
target_link_options(pvItems32 PRIVATE -static -Wl,--kill-at -Wl,--enable-stdcall-fixup)

# For use without registration: what a program's manifest refers to, beside the DLL.
set(manifest ${CMAKE_BINARY_DIR}/pvItems32.manifest)
add_custom_command(
  OUTPUT ${manifest}
  COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tools/make_manifest.py ${contract} ${manifest}
    --version ${PROJECT_VERSION}.0
  DEPENDS ${contract} tools/make_manifest.py
  COMMENT "Writing the side-by-side manifest")
add_custom_target(manifest DEPENDS ${manifest})
add_dependencies(pvItems32 manifest)

# What the Windows test programs share: late-bound clients, fakes of host objects, the main function.
file(GLOB support_sources CONFIGURE_DEPENDS tests/support/*.cpp)
add_library(test_support STATIC EXCLUDE_FROM_ALL ${support_sources}
  com/boundary.cpp com/late_bound.cpp com/variant.cpp)
target_link_libraries(test_support PUBLIC pv_options pv_plain pv_contract gtest)
set_source_files_properties(tests/support/source_tree.cpp PROPERTIES COMPILE_DEFINITIONS
  PV_SOURCE_DIR="Z:${CMAKE_SOURCE_DIR}")

# A test program of the folder tests/<name>, run under Wine.
function(add_windows_tests name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${name}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${name}_tests ${sources})
  target_link_libraries(${name}_tests PRIVATE test_support gdi32 user32)
  if(NOT name STREQUAL bench)
    # Compiled often and run briefly.
    target_compile_options(${name}_tests PRIVATE -O1)
    precompile(${name}_tests <gtest/gtest.h> <functional> <map> <optional> <string> <vector>
      com/automation.h tests/support/object.h)
  endif()
  target_link_options(${name}_tests PRIVATE -static)
  add_dependencies(${name}_tests pvItems32)
endfunction()

add_windows_tests(abi)

# The automation layer is tested with a class of its own, whose type library the program carries.
set(probe ${CMAKE_SOURCE_DIR}/tests/abi/probe.idl)
add_custom_command(
  OUTPUT ${generated}/probe.tlb ${generated}/probe.h ${generated}/probe_i.c
  COMMAND ${WIDL} ${widl_options} -t -o ${generated}/probe.tlb ${probe}
  COMMAND ${WIDL} ${widl_options} -h -o ${generated}/probe.h ${probe}
  COMMAND ${WIDL} ${widl_options} -u -o ${generated}/probe_i.c ${probe}
  DEPENDS ${probe}
  COMMENT "Compiling the probe of the tests")
set_source_files_properties(tests/abi/probe.rc PROPERTIES OBJECT_DEPENDS ${generated}/probe.tlb)
set_source_files_properties(${generated}/probe_i.c PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
target_sources(abi_tests PRIVATE tests/abi/probe.rc ${generated}/probe.h ${generated}/probe_i.c
  com/argument.cpp com/dispatch_table.cpp com/enumerator.cpp com/event_source.cpp
  com/index_key.cpp com/invoke.cpp com/module.cpp com/type_library.cpp)

add_windows_tests(automation)
add_windows_tests(dialogs)
add_windows_tests(bench)
# A call that is measured stays a call, though the program could know where it leads.
target_compile_options(bench_tests PRIVATE -fno-devirtualize -fno-devirtualize-speculatively)

# Saves under faults, and the other process that they need.
add_windows_tests(faults)
target_sources(faults_tests PRIVATE tests/automation/item_support.cpp)
add_executable(faults_helper tests/faults/helper/main.cpp)
target_link_libraries(faults_helper PRIVATE test_support)
target_link_options(faults_helper PRIVATE -static)
add_dependencies(faults_tests faults_helper)
# The caller without manners goes by the type library, too.
add_windows_tests(hostile)
target_sources(hostile_tests PRIVATE tests/abi/type_library.cpp)

# The library as a part of the program: all its allocations go through the program's own functions.
add_windows_tests(memory)
target_sources(memory_tests PRIVATE ${resource_scripts} tests/abi/type_library.cpp)
target_link_libraries(memory_tests PRIVATE pv_library)

# Found by the dialog tests in place of the platform's help viewer.
add_library(help_viewer MODULE tests/dialogs/help_viewer/hhctrl.cpp)
set_target_properties(help_viewer PROPERTIES PREFIX "" OUTPUT_NAME hhctrl SUFFIX .ocx
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/help_viewer)
target_compile_definitions(help_viewer PRIVATE UNICODE _UNICODE)
target_link_libraries(help_viewer PRIVATE pv_options)
target_link_options(help_viewer PRIVATE -static -Wl,--kill-at)
add_dependencies(dialogs_tests help_viewer)
