# The examples: a simulated transmitter (native), a transmitter server and hosts (Windows). They know
# the library by its type library alone, so nothing of it is linked here.

if(NOT WIN32)
  file(GLOB simulator_sources CONFIGURE_DEPENDS examples/simulator/*.cpp)
  list(REMOVE_ITEM simulator_sources ${CMAKE_SOURCE_DIR}/examples/simulator/main.cpp)
  add_library(fluxor_device STATIC ${simulator_sources})
  target_link_libraries(fluxor_device PUBLIC pv_options)
  add_executable(fluxor_simulator examples/simulator/main.cpp)
  target_link_libraries(fluxor_simulator PRIVATE fluxor_device)
  target_link_libraries(unit_tests PRIVATE fluxor_device)
  return()
endif()

# A Windows program or library of the examples, built as a third party would: with the header that
# comes out of the type library and the platform, nothing else.
function(target_is_third_party target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Werror)
  target_link_libraries(${target} PRIVATE pv_contract)
  target_link_options(${target} PRIVATE -static)
endfunction()

file(GLOB server_sources CONFIGURE_DEPENDS examples/fluxor_server/*.cpp)
add_library(fluxor_server SHARED ${server_sources} examples/fluxor_server/fluxor_server.def)
set_target_properties(fluxor_server PROPERTIES PREFIX "")
target_is_third_party(fluxor_server)
target_link_libraries(fluxor_server PRIVATE gdi32)
target_link_options(fluxor_server PRIVATE -Wl,--kill-at -Wl,--enable-stdcall-fixup)

add_executable(read_write examples/hosts/read_write.cpp examples/hosts/progress_listener.cpp
  examples/fluxor_server/library.cpp)
target_is_third_party(read_write)
target_link_libraries(read_write PRIVATE shell32)

# Tests of server and simulated transmitter over a serial line.
add_windows_tests(serial)
add_dependencies(serial_tests fluxor_server)
