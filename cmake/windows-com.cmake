# Windows only: the built-in simulator as an in-process COM server DLL, so
# that the console can run through real COM without the real server and the
# COM path has a server to be tested against. Register it with
# "regsvr32 vantrel-simulator.dll".
file(GLOB VANTREL_SIMULATOR_COM_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/simulator_dll/*.cpp)
add_library(vantrel_simulator_com SHARED ${VANTREL_SIMULATOR_COM_SOURCES}
  ${PROJECT_SOURCE_DIR}/src/simulator_dll/com_simulator.def)
target_link_libraries(vantrel_simulator_com PRIVATE vantrel_script vantrel_com advapi32)
set_target_properties(vantrel_simulator_com PROPERTIES PREFIX "" OUTPUT_NAME vantrel-simulator)
vantrel_windows_resources(vantrel_simulator_com FILE vantrel-simulator.dll
  DESCRIPTION "Simulator of Vantrel.Application for the Vantrel test console")

# The per-call cost of the COM path; built with the tests, since the COM
# stage measures it before it runs them.
if(VANTREL_BUILD_TESTS OR VANTREL_BUILD_BENCH)
  add_subdirectory(${PROJECT_SOURCE_DIR}/bench/com ${PROJECT_BINARY_DIR}/bench/com)
endif()
