// What the built module exports, read from the table in its file.
#include <windows.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "fake_host/library.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;

#ifdef _MSC_VER
constexpr const char* sessionExport = "?GetMultiRegistrator@reg@ZOR@@YAPEAViMultiRegistrator@12@XZ";
#else
constexpr const char* sessionExport = "_ZN3ZOR3reg19GetMultiRegistratorEv";
#endif

/// A part of a loaded file, by its place in the loaded image.
template <class Part>
const Part* partAt(os::ModuleHandle library, DWORD place) {
  return reinterpret_cast<const Part*>(static_cast<const unsigned char*>(library) + place);
}

const IMAGE_EXPORT_DIRECTORY* exportTable(os::ModuleHandle library) {
  const auto* const start = partAt<IMAGE_DOS_HEADER>(library, 0);
  const auto* const headers = partAt<IMAGE_NT_HEADERS>(library, static_cast<DWORD>(start->e_lfanew));
  return partAt<IMAGE_EXPORT_DIRECTORY>(
      library, headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
}

/// In the order of the table, which is that of their bytes.
std::vector<std::string> exportedNames(os::ModuleHandle library) {
  const IMAGE_EXPORT_DIRECTORY* const table = exportTable(library);
  const auto* const places = partAt<DWORD>(library, table->AddressOfNames);
  std::vector<std::string> names;
  for (DWORD i = 0; i < table->NumberOfNames; ++i) names.emplace_back(partAt<char>(library, places[i]));
  return names;
}

TEST(ModuleFile, ExportsThreeFunctionsAndNoOther) {
  const os::ModuleHandle library = loadLibrary(MODULE_FILE);
  ASSERT_NE(library, nullptr);
  EXPECT_THAT(exportedNames(library), ElementsAre(sessionExport, "odrxCreateModuleObject", "odrxGetAPIVersion"));
  // None without a name either.
  EXPECT_EQ(exportTable(library)->NumberOfFunctions, 3u);
  unloadLibrary(library);
}

}  // namespace
}  // namespace tiepoint::testing
