# What the binaries need around them on Windows.

# Boost.Filesystem draws the names of temporary files from the system's source of random numbers.
set_property(TARGET Boost::filesystem APPEND PROPERTY INTERFACE_LINK_LIBRARIES bcrypt)

# <windows.h> must not take the names min and max; mingw-w64 sees to it by itself.
if(MSVC)
  add_compile_definitions(NOMINMAX)
endif()

# The compiler's own libraries stand beside the binaries. They are shared: an exception that is
# thrown in one binary and caught in another needs one runtime for both.
set(tiepointCompilerRuntime)
if(MINGW)
  foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
      OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    list(APPEND tiepointCompilerRuntime ${file})
    file(COPY ${file} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    install(FILES ${file} DESTINATION bin)
  endforeach()
endif()
