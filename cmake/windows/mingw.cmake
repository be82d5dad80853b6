# Builds for 64-bit Windows on Debian, by mingw-w64 with POSIX threads: std::thread and std::mutex
# need that variant.
#
# The libraries beside the compiler's own come from TIEPOINT_WINDOWS_LIBRARIES (a variable of the
# environment, see scripts/windows-libraries); programs are those of the building machine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(tiepointTriplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${tiepointTriplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${tiepointTriplet}-g++-posix)
set(CMAKE_RC_COMPILER ${tiepointTriplet}-windres)

set(CMAKE_FIND_ROOT_PATH $ENV{TIEPOINT_WINDOWS_LIBRARIES} /usr/${tiepointTriplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The tests' programs run under wine.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../../scripts/under-wine)

# Libraries that are linked in; Boost's and SQLite's are built so alone.
set(Boost_USE_STATIC_LIBS ON)
# The CMake of Debian is older than its Boost, and says so.
set(Boost_NO_WARN_NEW_VERSIONS ON)
