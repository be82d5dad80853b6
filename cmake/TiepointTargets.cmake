# How a folder becomes a target.

# tiepoint_component(name [STATIC] SOURCES ... [DEPENDS ...])
#
# One folder of the registration library or of the workbench: an object library tiepoint_<name> with the alias
# tiepoint::<name>. A folder without sources becomes an interface library. DEPENDS names the
# targets whose headers it uses; an arrow that isn't listed here doesn't compile or doesn't pass
# scripts/check-includes. The objects reach a binary only through its own list of libraries; with
# STATIC, for what nobody looks up by name at run time, they come along with whoever needs them.
function(tiepoint_component name)
  cmake_parse_arguments(arg "STATIC" "" "SOURCES;DEPENDS" ${ARGN})
  if(arg_SOURCES)
    if(arg_STATIC)
      add_library(tiepoint_${name} STATIC ${arg_SOURCES})
    else()
      add_library(tiepoint_${name} OBJECT ${arg_SOURCES})
    endif()
    target_include_directories(tiepoint_${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>)
    target_link_libraries(tiepoint_${name} PUBLIC ${arg_DEPENDS})
    tiepoint_set_warnings(tiepoint_${name})
  else()
    add_library(tiepoint_${name} INTERFACE)
    target_include_directories(tiepoint_${name} INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>)
    target_link_libraries(tiepoint_${name} INTERFACE ${arg_DEPENDS})
  endif()
  add_library(tiepoint::${name} ALIAS tiepoint_${name})
endfunction()

# All rooms of the workbench below its command line, for a program that holds them all: the objects of
# a room reach a program only through the program's own list.
set(tiepointWorkbenchRooms
  tiepoint::workbench_io tiepoint::drawing tiepoint::profile tiepoint::view tiepoint::clouds tiepoint::workbench_host
  tiepoint::workbench_values tiepoint::workbench_geometry tiepoint::workbench_analysis tiepoint::workbench_session
  tiepoint::workbench_naming tiepoint::workbench_survey tiepoint::picture tiepoint::report tiepoint::rpc)

# tiepoint_utf8_program(name)
#
# Narrow text that this program exchanges with the system (arguments, paths) is UTF-8. It is so
# already but on Windows, where the program's manifest says so.
function(tiepoint_utf8_program name)
  if(MSVC)
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/windows/utf8.manifest)
  elseif(WIN32)
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/windows/utf8.rc)
  endif()
endfunction()

# tiepoint_beside_its_libraries(name)
#
# For a program that is built into a folder of its own. Windows looks for libraries beside the
# program; elsewhere the program knows where they are.
function(tiepoint_beside_its_libraries name)
  if(WIN32)
    add_custom_command(TARGET ${name} POST_BUILD COMMAND ${CMAKE_COMMAND} -E copy_if_different
      $<TARGET_RUNTIME_DLLS:${name}> ${tiepointCompilerRuntime} $<TARGET_FILE_DIR:${name}> COMMAND_EXPAND_LISTS)
  endif()
endfunction()

# tiepoint_test(name [SYSTEM_CODE_PAGE] SOURCES ... [LIBRARIES ...])
#
# A test program of GoogleTest; every case becomes a test of CTest, or the whole program one where it
# is built for another system. Its narrow text is UTF-8, and with
# SYSTEM_CODE_PAGE what the system makes of it.
function(tiepoint_test name)
  cmake_parse_arguments(arg "SYSTEM_CODE_PAGE" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gmock GTest::gtest_main rapidcheck)
  tiepoint_set_warnings(${name})
  if(NOT arg_SYSTEM_CODE_PAGE)
    tiepoint_utf8_program(${name})
  endif()
  if(CMAKE_CROSSCOMPILING)
    # Starting a program costs more there than most cases do.
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 600)
  else()
    # The names of values come from the tests; what GoogleTest prints of a value may hold an address.
    gtest_discover_tests(${name} NO_PRETTY_VALUES DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
  endif()
endfunction()

# tiepoint_bench(name SOURCES ... [LIBRARIES ...])
#
# A program of Google Benchmark; scripts/bench finds it by the ending _bench of its name. It may
# include the plain ways that the tests hold the code against, as baselines.
function(tiepoint_bench name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE
    ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR}/bench)
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} benchmark::benchmark_main)
  tiepoint_set_warnings(${name})
endfunction()
