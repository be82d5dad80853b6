// In which order the import command files a group, and that it doesn't ask what came of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "module/import_host.h"
#include "support/watched_repositories.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;

class ImportedData : public ImportTest {
 protected:
  ImportedData() { watched.given.clear(); }
  ~ImportedData() override { watched.takeData = true; }

  WatchedRepositories& watched = watchedRepositories();
};

TEST_F(ImportedData, AreGivenToAGroupThatStandsInTheDictionaryAlreadyAndTheDictionaryIsLowered) {
  import({files.write(L"a.txt", "P1 1 2 3\nP2 4 5 6\n")});
  ASSERT_EQ(watched.given.size(), 1u);
  EXPECT_EQ(watched.given.front().points, 2u);
  EXPECT_TRUE(watched.given.front().wasInDictionary);
  EXPECT_FALSE(watched.given.front().dictionaryWasRaised);
}

TEST_F(ImportedData, ThatTheGroupRefusesCountAsALoadedGroup) {
  watched.takeData = false;
  import({files.write(L"a.txt", "P1 1 2 3\n"), files.write(L"b.txt", "P1 1 2 3\n")});
  EXPECT_THAT(messages(),
              ElementsAre(L"Found 2 files", L"Command complite. 2 groups of reference points loaded in document"));
  EXPECT_THAT(groups(), ElementsAre(L"a", L"b"));
}

}  // namespace
}  // namespace tiepoint::testing
