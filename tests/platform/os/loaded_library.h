// A library that is loaded as long as the object stands.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "fake_host/library.h"

namespace tiepoint::testing {

class LoadedLibrary {
 public:
  explicit LoadedLibrary(const std::string& path) : libraryHandle(loadLibrary(path)) {
    EXPECT_NE(libraryHandle, nullptr);
  }
  ~LoadedLibrary() {
    if (libraryHandle) unloadLibrary(libraryHandle);
  }
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;

  os::ModuleHandle handle() const { return libraryHandle; }

 private:
  os::ModuleHandle libraryHandle;
};

}  // namespace tiepoint::testing
