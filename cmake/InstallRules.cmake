# What an installation holds, and how another project finds it:
#
#   bin/tiepoint              the workbench
#   lib/tiepoint/             the module and the two shared libraries, which bear no "lib" prefix and
#                             so stay out of the folder that everybody's linker searches; on Windows
#                             the two libraries stand in bin/, and their import libraries here
#   lib/cmake/tiepoint/       the package
#   lib/tiepoint/             and, where it is built, the archive of tiepoint::survey
#   include/tiepoint/         the headers of the interface, in the folders in which they name each other
#
# The module's folder is fixed: the workbench looks for it in ../lib/tiepoint beside its own folder.
# Every binary finds its neighbours by $ORIGIN, so the build tree's bin/ and an installation both run
# wherever they are moved. The run path is final at the build already: one that CMake replaces at the
# installation is padded until then with empty entries, which the loader takes for the working
# directory.

include(CMakePackageConfigHelpers)

set(tiepointLibraryDir lib/tiepoint)
set(tiepointPackageDir lib/cmake/tiepoint)
set(tiepointHeaderDir include/tiepoint)

# --- Binaries

set(tiepointInstalledLibraries drawing_sdk ZorPointClouds TSL_Registration)
set_target_properties(${tiepointInstalledLibraries} PROPERTIES
  BUILD_WITH_INSTALL_RPATH ON
  INSTALL_RPATH $ORIGIN)
install(TARGETS drawing_sdk ZorPointClouds
  EXPORT tiepointTargets
  LIBRARY DESTINATION ${tiepointLibraryDir}
  RUNTIME DESTINATION bin
  ARCHIVE DESTINATION ${tiepointLibraryDir}
  INCLUDES DESTINATION ${tiepointHeaderDir})
install(TARGETS TSL_Registration LIBRARY DESTINATION ${tiepointLibraryDir})

if(TIEPOINT_BUILD_WORKBENCH)
  set_target_properties(tiepoint PROPERTIES
    BUILD_WITH_INSTALL_RPATH ON
    INSTALL_RPATH $ORIGIN:$ORIGIN/../${tiepointLibraryDir})
  install(TARGETS tiepoint RUNTIME DESTINATION bin)
endif()

# --- The interfaces, for hosts that other projects write

# tiepoint::registrator_interface: session/i_multi_registrator.h and the records that it names.
add_library(tiepoint_registrator_interface INTERFACE)
add_library(tiepoint::registrator_interface ALIAS tiepoint_registrator_interface)
target_link_libraries(tiepoint_registrator_interface INTERFACE drawing_sdk)

# tiepoint::host_interfaces: what the module asks of its host, platform/host/*.h.
add_library(tiepoint_host_interfaces INTERFACE)
add_library(tiepoint::host_interfaces ALIAS tiepoint_host_interfaces)
target_link_libraries(tiepoint_host_interfaces INTERFACE drawing_sdk)

set_target_properties(tiepoint_registrator_interface PROPERTIES EXPORT_NAME registrator_interface)
set_target_properties(tiepoint_host_interfaces PROPERTIES EXPORT_NAME host_interfaces)
install(TARGETS tiepoint_registrator_interface tiepoint_host_interfaces
  EXPORT tiepointTargets
  INCLUDES DESTINATION ${tiepointHeaderDir})

install(FILES ${PROJECT_SOURCE_DIR}/src/session/i_multi_registrator.h DESTINATION ${tiepointHeaderDir}/session)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/records DESTINATION ${tiepointHeaderDir}
  FILES_MATCHING PATTERN "*.h")
foreach(folder sdk pointclouds host)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/platform/${folder} DESTINATION ${tiepointHeaderDir}/platform
    FILES_MATCHING PATTERN "*.h")
endforeach()
install(FILES
  ${PROJECT_BINARY_DIR}/generated/drawing_sdk_export.h
  ${PROJECT_BINARY_DIR}/generated/zor_point_clouds_export.h
  DESTINATION ${tiepointHeaderDir})

# --- The survey, for programs that register surveys of their own (the package's component "survey")

if(TARGET tiepoint_survey)
  set_target_properties(tiepoint_survey PROPERTIES EXPORT_NAME survey)
  install(TARGETS tiepoint_survey
    EXPORT tiepointSurveyTargets
    ARCHIVE DESTINATION ${tiepointLibraryDir}
    INCLUDES DESTINATION ${tiepointHeaderDir})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/workbench/values DESTINATION ${tiepointHeaderDir}/workbench
    FILES_MATCHING PATTERN "*.h")
  install(FILES ${PROJECT_SOURCE_DIR}/src/workbench/survey/survey.h
    DESTINATION ${tiepointHeaderDir}/workbench/survey)
  install(EXPORT tiepointSurveyTargets NAMESPACE tiepoint:: DESTINATION ${tiepointPackageDir})
endif()

# --- The package

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/tiepointConfig.cmake.in
  ${PROJECT_BINARY_DIR}/package/tiepointConfig.cmake
  INSTALL_DESTINATION ${tiepointPackageDir}
  PATH_VARS tiepointLibraryDir)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/tiepointConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/package/tiepointConfig.cmake
  ${PROJECT_BINARY_DIR}/package/tiepointConfigVersion.cmake
  DESTINATION ${tiepointPackageDir})
install(EXPORT tiepointTargets NAMESPACE tiepoint:: DESTINATION ${tiepointPackageDir})

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/README.md DESTINATION share/doc/tiepoint)
