#include "platform/os/loaded_modules.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "fake_host/exported.h"
#include "platform/os/loaded_library.h"
#include "support/platform.h"

FAKE_HOST_EXPORT int lookupTestProgramValue();
int lookupTestProgramValue() { return 44; }

namespace {

namespace fs = std::filesystem;
using tiepoint::os::exportAs;
using tiepoint::os::exportedFunction;
using tiepoint::os::loadedModule;
using tiepoint::os::moduleFileName;
using tiepoint::testing::isLoaded;
using tiepoint::testing::LoadedLibrary;
using tiepoint::testing::nativePath;

using ValueFunction = int (*)();

}  // namespace

TEST(LoadedModule, FindsALoadedLibraryByItsWindowsName) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  EXPECT_EQ(loadedModule("lookup_host.dll"), library.handle());
  EXPECT_EQ(loadedModule(L"lookup_host.dll"), library.handle());
}

TEST(LoadedModule, FindsALoadedLibraryByItsStem) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  EXPECT_EQ(loadedModule("lookup_host"), library.handle());
  EXPECT_EQ(loadedModule(L"lookup_host"), library.handle());
}

TEST(LoadedModule, DoesNotFindALibraryThatIsNotLoadedAndDoesNotLoadIt) {
  const LoadedLibrary neighbour(LOOKUP_HOST_FILE);
  const std::string path = LOOKUP_NEVER_LOADED_FILE;
  ASSERT_TRUE(fs::exists(path));
  EXPECT_EQ(loadedModule("lookup_never_loaded.dll"), nullptr);
  EXPECT_EQ(loadedModule(path.c_str()), nullptr);
  EXPECT_FALSE(isLoaded(path));
}

TEST(LoadedModule, KeepsNothingLoaded) {
  {
    const LoadedLibrary library(LOOKUP_HOST_FILE);
    EXPECT_NE(loadedModule("lookup_host"), nullptr);
    EXPECT_TRUE(isLoaded(LOOKUP_HOST_FILE));
  }
  EXPECT_FALSE(isLoaded(LOOKUP_HOST_FILE));
  EXPECT_EQ(loadedModule("lookup_host"), nullptr);
}

TEST(LoadedModule, ANameWithAPathMeansThatVeryFile) {
  const LoadedLibrary a(LOOKUP_TWIN_A_FILE);
  const LoadedLibrary b(LOOKUP_TWIN_B_FILE);
  ASSERT_NE(a.handle(), b.handle());
  EXPECT_EQ(loadedModule(LOOKUP_TWIN_A_FILE), a.handle());
  EXPECT_EQ(loadedModule(LOOKUP_TWIN_B_FILE), b.handle());
  const std::string stem = fs::path(LOOKUP_TWIN_B_FILE).replace_extension().string();
  EXPECT_EQ(loadedModule(stem.c_str()), b.handle());
  EXPECT_EQ(loadedModule("/elsewhere/lookup_twin.dll"), nullptr);
}

TEST(LoadedModule, OfTwoLibrariesOfOneNameTheFirstLoadedIsFound) {
  const LoadedLibrary b(LOOKUP_TWIN_B_FILE);
  const LoadedLibrary a(LOOKUP_TWIN_A_FILE);
  EXPECT_EQ(loadedModule("lookup_twin.dll"), b.handle());
}

TEST(LoadedModule, AnEmptyNameIsNoModule) {
  EXPECT_EQ(loadedModule(""), nullptr);
  EXPECT_EQ(loadedModule(L""), nullptr);
}

TEST(ExportedFunction, FindsWhatTheModuleDefines) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  const auto value = exportAs<ValueFunction>(library.handle(), "lookupHostValue");
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value(), 41);
}

TEST(ExportedFunction, GivesNullForWhatTheModuleLacks) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  EXPECT_EQ(exportedFunction(library.handle(), "lookupUserValue"), nullptr);
}

TEST(ExportedFunction, DoesNotFindWhatADependencyDefines) {
  const LoadedLibrary user(LOOKUP_USER_FILE);
  EXPECT_EQ(exportedFunction(user.handle(), "lookupDependencyValue"), nullptr);
  const auto value = exportAs<ValueFunction>(user.handle(), "lookupUserValue");
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value(), 42);
}

TEST(ExportedFunction, FindsADependencysExportInTheDependency) {
  const LoadedLibrary user(LOOKUP_USER_FILE);
  const auto value = exportAs<ValueFunction>(loadedModule("lookup_dependency.dll"), "lookupDependencyValue");
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value(), 43);
}

TEST(ExportedFunction, FindsWhatTheMainExecutableDefines) {
  const auto self = loadedModule(static_cast<const wchar_t*>(nullptr));
  const auto value = exportAs<ValueFunction>(self, "lookupTestProgramValue");
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value(), 44);
}

TEST(ExportedFunction, NoModuleAndNoNameGiveNull) {
  EXPECT_EQ(exportedFunction(nullptr, "qsort"), nullptr);
  EXPECT_EQ(exportedFunction(loadedModule(static_cast<const char*>(nullptr)), nullptr), nullptr);
}

TEST(ModuleFileName, IsTheFullPathOfTheFile) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  EXPECT_EQ(moduleFileName(library.handle()), fs::path(nativePath(LOOKUP_HOST_FILE)).wstring());
}

TEST(ModuleFileName, OfNoModuleIsEmpty) { EXPECT_TRUE(moduleFileName(nullptr).empty()); }
