# RapidCheck, for the laws on random input: the targets rapidcheck and rapidcheck_gtest.
#
# A package archive may lack its sources, which a build for another platform needs. With its headers
# alone the laws are compiled and report themselves as skipped.

if(NOT CMAKE_CROSSCOMPILING)
  find_package(rapidcheck REQUIRED)
  return()
endif()

find_package(rapidcheck QUIET)
if(NOT rapidcheck_FOUND)
  message(STATUS "RapidCheck isn't built for ${CMAKE_SYSTEM_NAME}: the laws will be skipped")
  find_path(TIEPOINT_RAPIDCHECK_HEADERS rapidcheck.h REQUIRED)
  add_library(rapidcheck INTERFACE)
  # The header in the place of RapidCheck's own must be found first.
  target_include_directories(rapidcheck INTERFACE ${PROJECT_SOURCE_DIR}/tests/support/skipped_laws)
  target_include_directories(rapidcheck SYSTEM INTERFACE ${TIEPOINT_RAPIDCHECK_HEADERS})
  add_library(rapidcheck_gtest INTERFACE)
  target_link_libraries(rapidcheck_gtest INTERFACE rapidcheck)
endif()
