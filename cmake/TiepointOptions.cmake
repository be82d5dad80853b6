# The switches of this build.

include(CMakeDependentOption)

option(TIEPOINT_BUILD_WORKBENCH "Build the stand-alone host tiepoint" ON)
# Debian has the drawing library for its own programs alone, not for those that it builds for Windows.
set(tiepointHasCairo ON)
if(WIN32)
  set(tiepointHasCairo OFF)
endif()
option(TIEPOINT_PICTURES "Let the workbench draw pictures; needs cairo" ${tiepointHasCairo})
# The tests meet the module in the workbench.
cmake_dependent_option(TIEPOINT_BUILD_TESTS "Build the tests" ${PROJECT_IS_TOP_LEVEL} TIEPOINT_BUILD_WORKBENCH OFF)
option(TIEPOINT_BUILD_BENCHMARKS "Build the benchmarks" OFF)
option(TIEPOINT_BUILD_FUZZERS "Build the fuzzers; needs clang" OFF)
option(TIEPOINT_WARNINGS_AS_ERRORS "Treat compiler warnings as errors" ${PROJECT_IS_TOP_LEVEL})
option(TIEPOINT_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Kind of build" FORCE)
endif()
