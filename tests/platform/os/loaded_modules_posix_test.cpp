// What the POSIX loader adds: names of Windows stand for names of libraries here.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/os/loaded_library.h"
#include "platform/os/loaded_modules.h"
#include "platform/sdk/od_alloc.h"

namespace {

namespace fs = std::filesystem;
using tiepoint::os::exportedFunction;
using tiepoint::os::loadedModule;
using tiepoint::os::moduleFileName;
using tiepoint::testing::LoadedLibrary;

std::string ownFileName() { return fs::read_symlink("/proc/self/exe").filename().string(); }

}  // namespace

TEST(LoadedModulePosix, FindsALoadedLibraryByItsFileName) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  EXPECT_EQ(loadedModule("lookup_host.so"), library.handle());
}

TEST(LoadedModulePosix, TakesTheEndingInAnyCaseAndTheStemExactly) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  EXPECT_EQ(loadedModule("lookup_host.DLL"), library.handle());
  EXPECT_EQ(loadedModule("lookup_host.Dll"), library.handle());
  EXPECT_EQ(loadedModule("Lookup_host.dll"), nullptr);
  EXPECT_EQ(loadedModule("lookup_hos.dll"), nullptr);
  EXPECT_EQ(loadedModule("ookup_host.dll"), nullptr);
  EXPECT_EQ(loadedModule("lookup_host.SO"), nullptr);
}

TEST(LoadedModulePosix, FindsALibraryThatWasLoadedByARelativePath) {
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

TEST(LoadedModulePosix, FindsALibraryWithANameBeyondAscii) {
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

TEST(LoadedModulePosix, NullIsTheMainExecutable) {
  const void* const self = dlopen(nullptr, RTLD_LAZY);
  EXPECT_NE(self, nullptr);
  EXPECT_EQ(loadedModule(static_cast<const wchar_t*>(nullptr)), self);
  EXPECT_EQ(loadedModule(static_cast<const char*>(nullptr)), self);
}

TEST(LoadedModulePosix, TheMainExecutableIsFoundByItsOwnFileName) {
  const auto* const self = loadedModule(static_cast<const char*>(nullptr));
  EXPECT_EQ(ownFileName(), "loaded_modules_test");
  EXPECT_EQ(loadedModule("loaded_modules_test"), self);
  EXPECT_EQ(loadedModule(L"loaded_modules_test"), self);
  EXPECT_EQ(loadedModule(fs::read_symlink("/proc/self/exe").c_str()), self);
}

TEST(ExportedFunctionPosix, DoesNotFindWhatTheLoaderWouldFindInADependency) {
  const LoadedLibrary user(LOOKUP_USER_FILE);
  EXPECT_NE(dlsym(user.handle(), "lookupDependencyValue"), nullptr);
  EXPECT_EQ(exportedFunction(user.handle(), "lookupDependencyValue"), nullptr);
}

TEST(ExportedFunctionPosix, DoesNotFindTheLibrariesOfTheMainExecutable) {
  const auto self = loadedModule(static_cast<const wchar_t*>(nullptr));
  EXPECT_NE(dlsym(self, "qsort"), nullptr);
  EXPECT_EQ(exportedFunction(self, "qsort"), nullptr);
}

TEST(ExportedFunctionPosix, DoesNotFindWhatALibraryOpenedForEverybodyDefines) {
  void* const library = dlopen(LOOKUP_HOST_FILE, RTLD_NOW | RTLD_GLOBAL);
  const auto self = loadedModule(static_cast<const wchar_t*>(nullptr));
  EXPECT_EQ(exportedFunction(self, "lookupHostValue"), nullptr);
  dlclose(library);
}

TEST(ModuleFileNamePosix, OfTheMainExecutableIsItsFullPath) {
  const auto self = loadedModule(static_cast<const char*>(nullptr));
  EXPECT_EQ(moduleFileName(self), fs::read_symlink("/proc/self/exe").wstring());
}

TEST(LoadedModulePosix, TakesNoMemoryForAShortName) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  const std::uint64_t before = odrxAllocationCount();
  const auto* const found = loadedModule(L"lookup_host.dll");
  const auto* const missing = loadedModule(L"mainview.dll");
  EXPECT_EQ(odrxAllocationCount(), before);
  EXPECT_EQ(found, library.handle());
  EXPECT_EQ(missing, nullptr);
}

TEST(LoadedModulePosix, TakesAPointAtTheBeginningForAPartOfTheName) {
  const fs::path copy = fs::path(testing::TempDir()) / ".hidden.so";
  fs::copy_file(LOOKUP_HOST_FILE, copy, fs::copy_options::overwrite_existing);
  {
    const LoadedLibrary library(copy.string());
    EXPECT_EQ(loadedModule(".hidden"), library.handle());
    EXPECT_EQ(loadedModule(".hidden.dll"), library.handle());
    EXPECT_EQ(loadedModule("hidden"), nullptr);
  }
  fs::remove(copy);
}
