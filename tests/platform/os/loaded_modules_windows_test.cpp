// What Windows' own calls bring: names in any case, with an ending or without, and paths with a drive.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/os/loaded_library.h"
#include "platform/os/loaded_modules.h"
#include "support/platform.h"
#include "workbench/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using tiepoint::os::exportedFunction;
using tiepoint::os::loadedModule;
using tiepoint::os::moduleFileName;
using tiepoint::testing::LoadedLibrary;
using tiepoint::testing::nativePath;

const wchar_t* const mainExecutable = nullptr;

}  // namespace

TEST(LoadedModuleWindows, TakesNamesInAnyCase) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  EXPECT_EQ(loadedModule("LOOKUP_HOST.DLL"), library.handle());
  EXPECT_EQ(loadedModule(L"Lookup_Host"), library.handle());
  EXPECT_EQ(loadedModule("lookup_hos.dll"), nullptr);
  EXPECT_EQ(loadedModule("lookup_host.so"), nullptr);
}

TEST(LoadedModuleWindows, ATrailingPointMeansNoEnding) {
  const LoadedLibrary library(LOOKUP_HOST_FILE);
  EXPECT_EQ(loadedModule("lookup_host."), nullptr);
}

TEST(LoadedModuleWindows, FindsALibraryWithANameBeyondAscii) {
  const TemporaryFolder folder;
  const std::string copy = folder.file("\xD1\x88\xD0\xBE\xD0\xB2.dll");
  fs::copy_file(LOOKUP_HOST_FILE, fs::u8path(copy));
  {
    const LoadedLibrary library(copy);
    EXPECT_EQ(loadedModule(L"\x0448\x043E\x0432.dll"), library.handle());
    EXPECT_EQ(loadedModule(L"\x0448\x043E\x0432"), library.handle());
    EXPECT_EQ(moduleFileName(library.handle()), fs::u8path(copy).wstring());
  }
}

TEST(LoadedModuleWindows, NullIsTheMainExecutable) {
  EXPECT_NE(loadedModule(mainExecutable), nullptr);
  EXPECT_EQ(loadedModule(static_cast<const char*>(nullptr)), loadedModule(mainExecutable));
  EXPECT_EQ(loadedModule("loaded_modules_test.exe"), loadedModule(mainExecutable));
}

TEST(ExportedFunctionWindows, DoesNotFindTheLibrariesOfTheMainExecutable) {
  EXPECT_NE(exportedFunction(loadedModule("kernel32"), "GetModuleHandleW"), nullptr);
  EXPECT_EQ(exportedFunction(loadedModule(mainExecutable), "GetModuleHandleW"), nullptr);
}

TEST(ModuleFileNameWindows, OfTheMainExecutableIsItsFullPathWithItsDrive) {
  const std::wstring path = moduleFileName(loadedModule(mainExecutable));
  EXPECT_EQ(path.substr(1, 2), L":\\");
  EXPECT_EQ(path.substr(path.rfind(L'\\') + 1), L"loaded_modules_test.exe");
}

TEST(ModuleFileNameWindows, IsWholeBeyondTheLengthOfOldPaths) {
  const TemporaryFolder folder;
  // The prefix switches the limit of 260 characters off.
  const std::wstring first = L"\\\\?\\" + (folder.path() / std::wstring(120, L'a')).wstring();
  const std::wstring second = first + L"\\" + std::wstring(120, L'b');
  const std::wstring copy = second + L"\\lookup_deep.dll";
  ASSERT_TRUE(CreateDirectoryW(first.c_str(), nullptr));
  ASSERT_TRUE(CreateDirectoryW(second.c_str(), nullptr));
  ASSERT_TRUE(CopyFileW(fs::u8path(nativePath(LOOKUP_HOST_FILE)).c_str(), copy.c_str(), FALSE));
  {
    const LoadedLibrary library(fs::path(copy).u8string());
    const std::wstring path = moduleFileName(library.handle());
    EXPECT_GT(path.size(), 260u);
    EXPECT_EQ(path.substr(path.rfind(L'\\') + 1), L"lookup_deep.dll");
  }
  DeleteFileW(copy.c_str());
  RemoveDirectoryW(second.c_str());
  RemoveDirectoryW(first.c_str());
}
