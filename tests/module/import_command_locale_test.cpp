// The import in a host that has spoilt every locale of the process.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "module/import_host.h"
#include "support/hostile_locale.h"
#include "support/platform.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;

class ImportInAHostileLocale : public ImportTest {
 protected:
  void importInHostileLocale(const std::vector<std::wstring>& paths, int filterIndex) {
    inHostileLocale([&] { import(paths, filterIndex); });
  }

  /// Cyrillic, but on Windows, where narrow paths go by the conversion that is taken away here.
  const std::wstring station = onWindows ? L"St" : L"\u0421\u0442";
};

TEST_F(ImportInAHostileLocale, AFileAtACyrillicPathBecomesAGroup) {
  const std::wstring path = files.write(station + L"/" + station + L".1.txt", "P1 1234.5 -2.5 3,0.25\n");
  importInHostileLocale({path}, 4);
  EXPECT_THAT(messages(),
              ElementsAre(L"Found 1 files", L"Command complite. 1 groups of reference points loaded in document"));
  EXPECT_THAT(groups(), ElementsAre(station + L".1"));
  EXPECT_THAT(points(station + L".1"), ElementsAre(ImportedPoint{L"P1", 1234.5, -2.5, 3, 0.25}));
}

TEST_F(ImportInAHostileLocale, NamesHaveTheCharactersOfTheirBytes) {
  importInHostileLocale({files.write(L"a.txt", "\xD2\x34 1 2 3\n\xA0P 1 2 3\nP\x85 1 2 3\n")}, 1);
  EXPECT_THAT(points(L"a"), ElementsAre(ImportedPoint{L"\u0422\u0034", 1, 2, 3, 1},
                                        ImportedPoint{L"\u00A0P", 1, 2, 3, 1}, ImportedPoint{L"P\u2026", 1, 2, 3, 1}));
}

}  // namespace
}  // namespace tiepoint::testing
