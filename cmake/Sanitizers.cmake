# Address and undefined-behaviour sanitizers for every target, when TIEPOINT_SANITIZE is on.
# Whether the toolchain has them is found out by linking with the flag.

if(TIEPOINT_SANITIZE)
  include(CheckCXXSourceCompiles)
  set(tiepointSanitizerFlags -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  set(CMAKE_REQUIRED_FLAGS -fsanitize=address,undefined)
  check_cxx_source_compiles("int main() { return 0; }" TIEPOINT_HAVE_SANITIZERS)
  unset(CMAKE_REQUIRED_FLAGS)
  if(NOT TIEPOINT_HAVE_SANITIZERS)
    message(FATAL_ERROR "TIEPOINT_SANITIZE is on, but this toolchain cannot link with -fsanitize=address,undefined")
  endif()
  add_compile_options(${tiepointSanitizerFlags})
  # Eigen takes a sanitizer's memory for unaligned and then aligns by hand; a library that was compiled without
  # the sanitizer frees such memory as it stands. The sanitizer's memory is aligned to 16 bytes like any other.
  add_compile_definitions(EIGEN_MALLOC_ALREADY_ALIGNED=1)
  add_link_options(${tiepointSanitizerFlags})
endif()

# The fuzzers steer by the coverage of all code that they reach.
if(TIEPOINT_BUILD_FUZZERS)
  include(CheckCXXSourceCompiles)
  set(CMAKE_REQUIRED_FLAGS -fsanitize=fuzzer)
  check_cxx_source_compiles("
    #include <cstddef>
    #include <cstdint>
    extern \"C\" int LLVMFuzzerTestOneInput(const std::uint8_t*, std::size_t) { return 0; }"
    TIEPOINT_HAVE_FUZZER)
  unset(CMAKE_REQUIRED_FLAGS)
  if(NOT TIEPOINT_HAVE_FUZZER)
    message(FATAL_ERROR "TIEPOINT_BUILD_FUZZERS is on, but this toolchain cannot link with -fsanitize=fuzzer")
  endif()
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
