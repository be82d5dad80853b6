#include "workbench/report/suggestion.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace tiepoint::workbench {
namespace {

TEST(EditDistance, CountsInsertionsRemovalsAndReplacements) {
  EXPECT_EQ(editDistance("", ""), 0u);
  EXPECT_EQ(editDistance("S1", "S2"), 1u);
  EXPECT_EQ(editDistance("reference", "referenz"), 2u);
  EXPECT_EQ(editDistance("", "abc"), 3u);
  EXPECT_EQ(editDistance("kitten", "sitting"), 3u);
}

RC_GTEST_PROP(EditDistance, IsTheSameBothWays, (const std::string& a, const std::string& b)) {
  RC_ASSERT(editDistance(a, b) == editDistance(b, a));
}

RC_GTEST_PROP(EditDistance, IsZeroForEqualTextsOnly, (const std::string& a, const std::string& b)) {
  RC_ASSERT((editDistance(a, b) == 0) == (a == b));
}

TEST(Suggestion, ASlipOfTheKeysIsAnsweredWithTheName) {
  EXPECT_EQ(suggestion("refrence", {"hall", "reference"}), "; did you mean \"reference\"?");
}

TEST(NearestName, IsTheFirstOfThoseThatAreAsNear) {
  EXPECT_EQ(nearestName("S3", {"S1", "S2"}), "S1");
  EXPECT_EQ(nearestName("S22", {"S1", "S2"}), "S2");
}

TEST(NearestName, OfAShortNameMayBeTwoBytesOff) {
  EXPECT_EQ(nearestName("wset", {"west"}), "west");
  EXPECT_FALSE(nearestName("wxyz", {"west"}));
}

TEST(NearestName, OfALongNameMayBeAThirdOff) {
  EXPECT_EQ(nearestName("north tower 1", {"north town 24"}), "north town 24");
  EXPECT_FALSE(nearestName("north tower", {"west hall 24"}));
}

TEST(NearestName, KeepsSomethingOfTheName) {
  EXPECT_FALSE(nearestName("S1", {"T2"})) << "two bytes off is another name";
  EXPECT_FALSE(nearestName("", {"S1"}));
}

TEST(NearestName, IsNoneOfNone) { EXPECT_FALSE(nearestName("S1", {})); }

TEST(Suggestion, TenNamesAreListedInFull) {
  EXPECT_EQ(suggestion("north", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}),
            "; there are: 1, 2, 3, 4, 5, 6, 7, 8, 9, 10");
}

TEST(Suggestion, ADifferentWordIsAnsweredWithTheList) {
  EXPECT_EQ(suggestion("north", {"S1", "S2"}), "; there are: S1, S2");
}

TEST(Suggestion, ALongListIsCut) {
  EXPECT_EQ(suggestion("north", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"}),
            "; there are: 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, ...");
}

TEST(Suggestion, WithoutNamesThereIsNone) { EXPECT_EQ(suggestion("north", {}), ""); }

}  // namespace
}  // namespace tiepoint::workbench
