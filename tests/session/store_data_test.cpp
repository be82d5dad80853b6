// In which order storeCommonPoints files its new group, and what comes of the filing.
#include <gtest/gtest.h>

#include "support/session_builder.h"
#include "support/watched_repositories.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

class StoredData : public ::testing::Test {
 protected:
  StoredData() {
    std::map<RefPointId, double> discrepancies;
    EXPECT_TRUE(session->registerPairwise(discrepancies));
    watched.given.clear();
  }
  ~StoredData() override { watched.takeData = true; }

  WatchedRepositories& watched = watchedRepositories();
  Session session{{{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}}};
};

TEST_F(StoredData, AreGivenToAGroupThatStandsInTheDictionaryAlreadyAndTheDictionaryIsLowered) {
  ASSERT_TRUE(session->storeCommonPoints("merged"));
  ASSERT_EQ(watched.given.size(), 1u);
  EXPECT_EQ(watched.given.front().points, 3u);
  EXPECT_TRUE(watched.given.front().wasInDictionary);
  EXPECT_FALSE(watched.given.front().dictionaryWasRaised);
  EXPECT_EQ(session.document().storedGroup("merged").size(), 3u);
}

TEST_F(StoredData, ThatTheGroupRefusesMakeTheResultFalse) {
  watched.takeData = false;
  EXPECT_FALSE(session->storeCommonPoints("merged"));
  // The entry stands, so that the name is taken from now on.
  watched.takeData = true;
  EXPECT_FALSE(session->storeCommonPoints("merged"));
  EXPECT_EQ(watched.given.size(), 1u);
}

}  // namespace
