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
