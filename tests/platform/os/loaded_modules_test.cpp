#include "platform/os/loaded_modules.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

extern "C" int lookupTestProgramValue();
int lookupTestProgramValue() { return 44; }

namespace {

namespace fs = std::filesystem;
using tiepoint::os::exportAs;
using tiepoint::os::exportedFunction;
using tiepoint::os::loadedModule;
using tiepoint::os::moduleFileName;

using ValueFunction = int (*)();

class LoadedLibrary {
 public:
  explicit LoadedLibrary(const std::string& path) : libraryHandle(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!libraryHandle) ADD_FAILURE() << dlerror();
  }
  ~LoadedLibrary() {
    if (libraryHandle) dlclose(libraryHandle);
  }
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;

  void* handle() const { return libraryHandle; }

 private:
  void* libraryHandle;
};

bool isLoaded(const std::string& path) {
  void* const handle = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (handle) dlclose(handle);
  return handle != nullptr;
}

std::string ownFileName() { return fs::read_symlink("/proc/self/exe").filename().string(); }

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

TEST(LoadedModule, FindsALoadedLibraryByItsFileName) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  EXPECT_EQ(loadedModule("lookup_host.so"), library.handle());
}

TEST(LoadedModule, TakesTheEndingInAnyCaseAndTheStemExactly) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  EXPECT_EQ(loadedModule("lookup_host.DLL"), library.handle());
  EXPECT_EQ(loadedModule("lookup_host.Dll"), library.handle());
  EXPECT_EQ(loadedModule("Lookup_host.dll"), nullptr);
  EXPECT_EQ(loadedModule("lookup_hos.dll"), nullptr);
  EXPECT_EQ(loadedModule("ookup_host.dll"), nullptr);
  EXPECT_EQ(loadedModule("lookup_host.SO"), nullptr);
}

TEST(LoadedModule, DoesNotFindALibraryThatIsNotLoadedAndDoesNotLoadIt) {
  const LoadedLibrary neighbour(LOOKUP_HOST_FILE);
  const std::string path = fs::path(LOOKUP_HOST_FILE).parent_path() / "lookup_never_loaded.so";
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
  const std::string stem = fs::path(LOOKUP_TWIN_B_FILE).replace_extension();
  EXPECT_EQ(loadedModule(stem.c_str()), b.handle());
  EXPECT_EQ(loadedModule("/elsewhere/lookup_twin.so"), nullptr);
}

TEST(LoadedModule, OfTwoLibrariesOfOneNameTheFirstLoadedIsFound) {
  const LoadedLibrary b(LOOKUP_TWIN_B_FILE);
  const LoadedLibrary a(LOOKUP_TWIN_A_FILE);
  EXPECT_EQ(loadedModule("lookup_twin.dll"), b.handle());
}

TEST(LoadedModule, FindsALibraryThatWasLoadedByARelativePath) {
  const fs::path before = fs::current_path();
  fs::current_path(fs::path(LOOKUP_HOST_FILE).parent_path());
  {
    const LoadedLibrary library("./lookup_host.so");
    EXPECT_EQ(loadedModule("lookup_host"), library.handle());
    EXPECT_EQ(loadedModule(LOOKUP_HOST_FILE), library.handle());
    EXPECT_EQ(moduleFileName(library.handle()), fs::path(LOOKUP_HOST_FILE).wstring());
  }
  fs::current_path(before);
}

TEST(LoadedModule, FindsALibraryWithANameBeyondAscii) {
  const fs::path copy = fs::path(testing::TempDir()) / fs::u8path("\xD1\x88\xD0\xBE\xD0\xB2.so");
  fs::copy_file(LOOKUP_HOST_FILE, copy, fs::copy_options::overwrite_existing);
  {
    const LoadedLibrary library(copy.string());
    EXPECT_EQ(loadedModule(L"\x0448\x043E\x0432.dll"), library.handle());
    EXPECT_EQ(loadedModule("\xD1\x88\xD0\xBE\xD0\xB2"), library.handle());
    const std::wstring path = moduleFileName(library.handle());
    EXPECT_EQ(path.substr(path.rfind(L'/') + 1), L"\x0448\x043E\x0432.so");
  }
  fs::remove(copy);
}

TEST(LoadedModule, NullIsTheMainExecutable) {
  const void* const self = dlopen(nullptr, RTLD_LAZY);
  EXPECT_NE(self, nullptr);
  EXPECT_EQ(loadedModule(static_cast<const wchar_t*>(nullptr)), self);
  EXPECT_EQ(loadedModule(static_cast<const char*>(nullptr)), self);
}

TEST(LoadedModule, TheMainExecutableIsFoundByItsOwnFileName) {
  const auto* const self = loadedModule(static_cast<const char*>(nullptr));
  EXPECT_EQ(ownFileName(), "loaded_modules_test");
  EXPECT_EQ(loadedModule("loaded_modules_test"), self);
  EXPECT_EQ(loadedModule(L"loaded_modules_test"), self);
  EXPECT_EQ(loadedModule(fs::read_symlink("/proc/self/exe").c_str()), self);
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
  EXPECT_NE(dlsym(user.handle(), "lookupDependencyValue"), nullptr);
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

TEST(ExportedFunction, DoesNotFindTheLibrariesOfTheMainExecutable) {
  const auto self = loadedModule(static_cast<const wchar_t*>(nullptr));
  EXPECT_NE(dlsym(self, "qsort"), nullptr);
  EXPECT_EQ(exportedFunction(self, "qsort"), nullptr);
}

TEST(ExportedFunction, DoesNotFindWhatALibraryOpenedForEverybodyDefines) {
  void* const library = dlopen(LOOKUP_HOST_FILE, RTLD_NOW | RTLD_GLOBAL);
  const auto self = loadedModule(static_cast<const wchar_t*>(nullptr));
  EXPECT_EQ(exportedFunction(self, "lookupHostValue"), nullptr);
  dlclose(library);
}

TEST(ExportedFunction, NoModuleAndNoNameGiveNull) {
  EXPECT_EQ(exportedFunction(nullptr, "qsort"), nullptr);
  EXPECT_EQ(exportedFunction(loadedModule(static_cast<const char*>(nullptr)), nullptr), nullptr);
}

TEST(ModuleFileName, IsTheFullPathOfTheFile) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  EXPECT_EQ(moduleFileName(library.handle()), fs::path(LOOKUP_HOST_FILE).wstring());
}

TEST(ModuleFileName, OfTheMainExecutableIsItsFullPath) {
  const auto self = loadedModule(static_cast<const char*>(nullptr));
  EXPECT_EQ(moduleFileName(self), fs::read_symlink("/proc/self/exe").wstring());
}

TEST(ModuleFileName, OfNoModuleIsEmpty) { EXPECT_TRUE(moduleFileName(nullptr).empty()); }
