# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# What the builds for Windows share: compiler options, the IDL compiler, precompiled headers.

# Numbers are computed in their own 32 or 64 bits, as the contract has it, not in the wider
# registers of the x87. Pairs of them in one register are not worth it: the frame of each function
# that makes some must be aligned first, as 32-bit callers align theirs to words only.
add_compile_options(-msse2 -mfpmath=sse -fno-tree-slp-vectorize)

# Two builds of the same sources in two folders give the same programs: neither the folder nor the time
# is written into them. Counted lines are looked up in the folder.
if(NOT PV_COVERAGE)
  add_compile_options("-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.")
endif()
add_link_options(-Wl,--no-insert-timestamp)

find_package(Python3 REQUIRED COMPONENTS Interpreter)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL x86_64)
  set(PV_MANIFEST_PROCESSOR amd64)
  file(GLOB stdole_dirs /usr/lib/*/wine/x86_64-windows)
else()
  set(PV_MANIFEST_PROCESSOR x86)
  file(GLOB stdole_dirs /usr/lib/*/wine/i386-windows)
endif()
find_program(WIDL ${PV_TARGET}-widl REQUIRED)
find_file(STDOLE2_TLB stdole2.tlb PATHS ${stdole_dirs} NO_CMAKE_FIND_ROOT_PATH REQUIRED)
get_filename_component(stdole_dir ${STDOLE2_TLB} DIRECTORY)

set(PV_GENERATED_DIR ${CMAKE_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${PV_GENERATED_DIR})

# Compiles <idl> into <name>.tlb, <name>.h and <name>_i.c in the folder of generated files. More
# arguments are a command that completes the type library. The compiler writes the name that it is given
# into its results, so it gets no folder.
function(compile_idl idl)
  get_filename_component(name ${idl} NAME_WE)
  get_filename_component(folder ${idl} DIRECTORY)
  set(base ${PV_GENERATED_DIR}/${name})
  set(shim ${CMAKE_SOURCE_DIR}/typelib/shim)
  set(sources ${idl} ${shim}/oaidl.idl ${shim}/ocidl.idl ${shim}/unknwn.idl)
  # It writes the time into its results, too.
  set(widl ${CMAKE_COMMAND} -E env WIDL_TIME_OVERRIDE=0 ${WIDL} -I${shim} -L${stdole_dir})
  set(completion)
  if(ARGN)
    set(completion COMMAND ${ARGN})
  endif()
  add_custom_command(
    OUTPUT ${base}.tlb
    COMMAND ${widl} -t -o ${base}.tlb ${name}.idl
    ${completion}
    DEPENDS ${sources} ${CMAKE_SOURCE_DIR}/tools/typelib_help.py ${CMAKE_SOURCE_DIR}/tools/contract.py
      ${CMAKE_SOURCE_DIR}/tools/help_topics.py ${CMAKE_SOURCE_DIR}/typelib/help_topics.txt
    WORKING_DIRECTORY ${folder}
    COMMENT "Compiling ${name}.idl")
  add_custom_command(
    OUTPUT ${base}.h ${base}_i.c
    COMMAND ${widl} -h -o ${base}.h ${name}.idl
    COMMAND ${widl} -u -o ${base}_i.c ${name}.idl
    DEPENDS ${sources}
    WORKING_DIRECTORY ${folder}
    COMMENT "Writing ${name}.h")
endfunction()

# Writes the dispatch tables of the contract in <idl>: <name>_dispatch.cpp and <name>_dispatch.h in the folder of
# generated files.
function(make_dispatch_tables idl)
  get_filename_component(name ${idl} NAME_WE)
  set(base ${PV_GENERATED_DIR}/${name})
  set(writer ${CMAKE_SOURCE_DIR}/tools/make_dispatch.py)
  add_custom_command(
    OUTPUT ${base}_dispatch.cpp ${base}_dispatch.h
    COMMAND Python3::Interpreter ${writer} ${idl} ${base}
    DEPENDS ${idl} ${writer} ${CMAKE_SOURCE_DIR}/tools/contract.py
    COMMENT "Writing the dispatch tables of ${name}.idl")
endfunction()

# What nearly every file of a target starts with, compiled once. The compiler then no longer knows
# the platform's headers from ours and warns of bounds inside them, where short literals are copied.
function(precompile target)
  target_precompile_headers(${target} PRIVATE ${ARGN})
  target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overread)
endfunction()
