#include "workbench/host/loaded_library.h"

#include <gtest/gtest.h>

#include <filesystem>
#ifndef _WIN32
#include <dlfcn.h>
#endif

#include "platform/os/loaded_modules.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

const char* const anExport = "odrxGetAPIVersion";

TEST(LoadedLibrary, IsLoadedByItsPathUntilItIsUnloaded) {
  std::string reason = "untouched";
  EXPECT_EQ(residentLibrary(FAKE_MODULE), nullptr);
  const os::ModuleHandle library = loadLibrary(FAKE_MODULE, reason);
  ASSERT_NE(library, nullptr);
  EXPECT_EQ(reason, "untouched");
  EXPECT_NE(os::exportedFunction(library, anExport), nullptr);
  EXPECT_EQ(residentLibrary(FAKE_MODULE), library);
  unloadLibrary(library);
}

TEST(LoadedLibrary, IsCountedForEachThatLoadsIt) {
  std::string reason;
  const os::ModuleHandle one = loadLibrary(FAKE_MODULE, reason);
  const os::ModuleHandle two = loadLibrary(FAKE_MODULE, reason);
  ASSERT_NE(one, nullptr);
  EXPECT_EQ(one, two);
  unloadLibrary(two);
  EXPECT_EQ(residentLibrary(FAKE_MODULE), one);
  unloadLibrary(one);
}

TEST(LoadedLibrary, IsNotHeldByTheQuestionWhetherItIsThere) {
  std::string reason;
  const os::ModuleHandle library = loadLibrary(FAKE_MODULE_WITHOUT_SESSION, reason);
  ASSERT_NE(library, nullptr);
  EXPECT_EQ(residentLibrary(FAKE_MODULE_WITHOUT_SESSION), library);
  EXPECT_EQ(residentLibrary(FAKE_MODULE_WITHOUT_SESSION), library);
  unloadLibrary(library);
  EXPECT_EQ(residentLibrary(FAKE_MODULE_WITHOUT_SESSION), nullptr);
}

TEST(LoadedLibrary, ThatCantBeLoadedIsNullWithAReason) {
  const TemporaryFolder folder;
  const std::string missing = folder.file("none.so"), text = folder.file("text.so");
  writeBytes(text, "this is no library");
  for (const std::string& path : {missing, text}) {
    std::string reason;
    EXPECT_EQ(loadLibrary(path, reason), nullptr) << path;
    EXPECT_NE(reason, "") << path;
    EXPECT_EQ(residentLibrary(path), nullptr) << path;
  }
}

TEST(LoadedLibrary, MayStandInAFolderOfAnyName) {
  const TemporaryFolder folder;
  const std::string path = folder.file("модуль ü.so");
  std::filesystem::copy_file(std::filesystem::u8path(FAKE_MODULE), std::filesystem::u8path(path));
  std::string reason;
  const os::ModuleHandle library = loadLibrary(path, reason);
  ASSERT_NE(library, nullptr) << reason;
  EXPECT_EQ(residentLibrary(path), library);
  unloadLibrary(library);
}

// On Windows no library shares its symbols.
#ifndef _WIN32
TEST(LoadedLibrary, KeepsItsSymbolsToItself) {
  std::string reason;
  const os::ModuleHandle library = loadLibrary(FAKE_MODULE, reason);
  ASSERT_NE(library, nullptr) << reason;
  EXPECT_EQ(dlsym(RTLD_DEFAULT, anExport), nullptr);
  unloadLibrary(library);
}
#endif

}  // namespace
}  // namespace tiepoint::workbench
