# The shared library. Its objects are a target of their own, so that tests can reach internals that the
# library does not export.
loopwise_glob(library_sources GLOB src/*/*.cpp)
add_library(loopwise_objects OBJECT ${library_sources})
target_compile_features(loopwise_objects PUBLIC cxx_std_20)
target_include_directories(loopwise_objects PUBLIC ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR})
# A sign decides whether a chain stays knotted: no fused multiply-add may change one.
target_compile_options(loopwise_objects PRIVATE -ffp-contract=off)
# Debug information is what tests/interface.sh reads. It names no folder of the machine that built it, and
# packages are stripped of it.
target_compile_options(loopwise_objects PRIVATE -g
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
set_target_properties(loopwise_objects PROPERTIES
  POSITION_INDEPENDENT_CODE ON
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON)

# Tests choose the instructions of the kernels; what users install reads no environment.
if(LOOPWISE_TESTS)
  target_compile_definitions(loopwise_objects PRIVATE LOOPWISE_CHOOSE_INSTRUCTIONS)
endif()

set(export_list ${PROJECT_SOURCE_DIR}/cmake/exports.map)
add_library(loopwise SHARED $<TARGET_OBJECTS:loopwise_objects>)
add_library(loopwise::loopwise ALIAS loopwise)
target_compile_features(loopwise INTERFACE cxx_std_17)
target_include_directories(loopwise INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_link_options(loopwise PRIVATE LINKER:--version-script=${export_list})
set_target_properties(loopwise PROPERTIES
  LINKER_LANGUAGE CXX
  LINK_DEPENDS ${export_list}
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR})

include(${CMAKE_CURRENT_LIST_DIR}/hardening.cmake)
