#include "workbench/host/loaded_module.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <new>
#include <string>

#include "support/platform.h"
#include "workbench/host/loaded_library.h"
#include "workbench/host/workbench.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using tiepoint::testing::nativePath;

std::string refusalOf(const std::string& module) {
  try {
    const Workbench workbench({{}, module});
  } catch (const ModuleError& error) {
    return error.what();
  }
  return "no error";
}

TEST(LoadedModule, IsRefusedWhenThereIsNoSuchFile) {
  const TemporaryFolder folder;
  const std::string module = folder.file("missing.so");
  EXPECT_EQ(refusalOf(module),
            module + ": the module can\'t be used: there is no such file; name the module with --module");
}

TEST(LoadedModule, IsRefusedWhenItIsAFolder) {
  const TemporaryFolder folder;
  const std::string module = folder.path().u8string();
  EXPECT_EQ(refusalOf(module), module + ": the module can\'t be used: this is a folder; name the module's file");
}

TEST(LoadedModule, IsRefusedWhenItIsNoLibrary) {
  const TemporaryFolder folder;
  const std::string module = folder.file("text.so");
  writeBytes(module, "not a library\n");
  const std::string start = module + ": the module can\'t be used: it isn't a library that can be loaded here (";
  const std::string refusal = refusalOf(module);
  EXPECT_EQ(refusal.substr(0, start.size()), start);
  EXPECT_EQ(refusal.find('\n'), std::string::npos);
}

TEST(LoadedModule, IsRefusedWhenItLacksAnExport) {
  EXPECT_EQ(refusalOf(FAKE_MODULE_WITHOUT_SESSION), nativePath(FAKE_MODULE_WITHOUT_SESSION) +
                                                        ": the module can\'t be used: it isn't a registration module, "
                                                        "as it doesn't export _ZN3ZOR3reg19GetMultiRegistratorEv");
}

TEST(LoadedModule, IsRefusedWhenItIsMadeForAnotherVersion) {
  EXPECT_EQ(
      refusalOf(FAKE_MODULE_OF_ANOTHER_VERSION),
      nativePath(FAKE_MODULE_OF_ANOTHER_VERSION) +
          ": the module can\'t be used: it was built for version 21.9.0.0 of the drawing SDK; 21.8.0.0 is needed");
}

TEST(LoadedModule, LeavesNoWorkbenchBehindWhenItIsRefused) {
  refusalOf(FAKE_MODULE_OF_ANOTHER_VERSION);
  EXPECT_EQ(refusalOf(FAKE_MODULE), "no error");
}

TEST(LoadedModule, IsNamedByItsAbsolutePath) {
  const std::filesystem::path module(FAKE_MODULE);
  const std::filesystem::path relative = std::filesystem::relative(module);
  const Workbench workbench({{}, relative.u8string()});
  EXPECT_EQ(workbench.modulePath(), nativePath(FAKE_MODULE));
}

TEST(LoadedModule, LoadsFromAPathOutsideAscii) {
  const TemporaryFolder folder;
  const std::string module = folder.file("\xD0\xBC\xD0\xBE\xD0\xB4\xF0\x9F\x98\x80.so");
  std::filesystem::copy_file(FAKE_MODULE, std::filesystem::u8path(module));
  const Workbench workbench({{}, module});
  EXPECT_EQ(workbench.modulePath(), module);
  EXPECT_EQ(workbench.commands().size(), 3u);
}

TEST(LoadedModule, ThrowsWhenTheModuleGivesNoSession) {
  Workbench workbench({{}, FAKE_MODULE_WITH_NULL_SESSION});
  workbench.openTemporaryDocument();
  EXPECT_THROW(workbench.newSession(), std::bad_alloc);
}

/// Keeps a copy of the fake module in memory, so that what it went through can be read after a
/// workbench has let it go.
class KeptModule {
 public:
  KeptModule() : path(folder.file("kept.so")) {
    std::filesystem::copy_file(FAKE_MODULE, std::filesystem::u8path(path));
    std::string reason;
    library = loadLibrary(path, reason);
  }
  ~KeptModule() { unloadLibrary(library); }

  const std::string& file() const { return path; }
  std::string history() const { return os::exportAs<const char* (*)()>(library, "fakeModuleHistory")(); }

 private:
  TemporaryFolder folder;
  std::string path;
  os::ModuleHandle library = nullptr;
};

TEST(LoadedModule, IsCreatedAndStartedThenStoppedAndReleased) {
  const KeptModule kept;
  {
    const Workbench workbench({{}, kept.file()});
    EXPECT_EQ(kept.history(), "ci");
  }
  EXPECT_EQ(kept.history(), "ciud");
}

TEST(LoadedModule, IsUnloadedAtTheEnd) {
  const TemporaryFolder folder;
  const std::string module = folder.file("unloaded.so");
  std::filesystem::copy_file(FAKE_MODULE, std::filesystem::u8path(module));
  {
    const Workbench workbench({{}, module});
    EXPECT_NE(residentLibrary(module), nullptr);
  }
  EXPECT_EQ(residentLibrary(module), nullptr);
}

TEST(LoadedModule, HasItsCommandsAgainWhenTheSystemKeptItInMemory) {
  const TemporaryFolder folder;
  const std::string module = folder.file("resident.so");
  std::filesystem::copy_file(FAKE_MODULE, std::filesystem::u8path(module));
  os::ModuleHandle kept = nullptr;
  {
    const Workbench workbench({{}, module});
    ASSERT_EQ(workbench.commands().size(), 3u);
    std::string reason;
    kept = loadLibrary(module, reason);
  }
  {
    const Workbench workbench({{}, module});
    ASSERT_EQ(workbench.commands().size(), 3u);
    EXPECT_EQ(workbench.commands()[0].globalName, L"FAKE_DIALOG");
  }
  unloadLibrary(kept);
}

TEST(LoadedModule, IsLookedForBesideTheExecutableByDefault) {
  // This test program stands beside no module, nor in an installation.
  const std::string refusal = refusalOf("");
  EXPECT_NE(refusal.find("TSL_Registration"), std::string::npos) << refusal;
  EXPECT_NE(refusal.find("name it with --module"), std::string::npos) << refusal;
}

}  // namespace
}  // namespace tiepoint::workbench
