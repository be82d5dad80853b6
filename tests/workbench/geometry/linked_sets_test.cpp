#include "workbench/geometry/linked_sets.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <random>

#include "solver/arbitrary.h"
#include "workbench/geometry/plain_linked_sets.h"

namespace tiepoint::workbench {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using tiepoint::testing::arbitraryBetween;
using Sets = std::vector<std::set<std::string>>;

TEST(LinkedSets, AreJoinedByThreeNamesAndNotByTwo) {
  EXPECT_THAT(linkedSets({{"a", "b", "c"}, {"a", "b", "x"}, {"a", "b", "c", "d"}}, 3),
              ElementsAre(ElementsAre(0, 2), ElementsAre(1)));
}

TEST(LinkedSets, CountAsOneSetOfAllTheirNames) {
  // The last shares two names with the first and one more with the second.
  EXPECT_THAT(linkedSets({{"a", "b", "p", "q", "r"}, {"c", "p", "q", "r"}, {"a", "b", "c"}}, 3),
              ElementsAre(ElementsAre(0, 1, 2)));
}

TEST(LinkedSets, ThatAreFoundLinkedTogetherAreJoinedOnce) {
  EXPECT_THAT(linkedSets({{"a", "b"}, {"c", "d"}, {"a", "b", "c", "d"}}, 2), ElementsAre(ElementsAre(0, 1, 2)));
}

TEST(LinkedSets, WithoutNamesStandAlone) {
  EXPECT_THAT(linkedSets({{}, {"a"}, {}}, 1), ElementsAre(ElementsAre(0), ElementsAre(1), ElementsAre(2)));
  EXPECT_THAT(linkedSets({}, 3), IsEmpty());
}

/// Few names for many sets, so that many share just too few or just enough.
Sets crowdedSets() {
  Sets sets(arbitraryBetween<std::size_t>(0, 20));
  for (std::set<std::string>& names : sets) {
    const int count = arbitraryBetween(0, 6);
    for (int i = 0; i < count; ++i) names.insert("n" + std::to_string(arbitraryBetween(0, 23)));
  }
  return sets;
}

RC_GTEST_PROP(LinkedSets, AreThoseOfAScanThatStartsAgain, ()) {
  const Sets sets = crowdedSets();
  const std::size_t least = arbitraryBetween<std::size_t>(1, 4);
  const auto parts = linkedSets(sets, least);
  RC_CLASSIFY(parts.size() > 1 && parts.size() < sets.size(), "some sets joined");
  RC_ASSERT(parts == tiepoint::testing::plainLinkedSets(sets, least));
}

/// The first two share three names; each further set shares two with the one before it and one with
/// the one before that, so that it hangs on both together and on none alone.
Sets chain(std::size_t count) {
  Sets sets(count);
  const auto share = [&](std::size_t a, std::size_t b, const std::string& which) {
    const std::string name = std::to_string(a) + " " + std::to_string(b) + which;
    sets[a].insert(name);
    sets[b].insert(name);
  };
  share(0, 1, "c");
  for (std::size_t k = 1; k < count; ++k) {
    share(k - 1, k, "a");
    share(k - 1, k, "b");
    if (k > 1) share(k - 2, k, "a");
  }
  return sets;
}

TEST(LinkedSets, ThatHangOnAllBeforeThemAreJoinedWhateverTheirOrder) {
  Sets sets = chain(60);
  ASSERT_EQ(linkedSets(sets, 3).size(), 1u);
  std::reverse(sets.begin(), sets.end());
  EXPECT_EQ(linkedSets(sets, 3).size(), 1u);
  std::mt19937_64 random(5);
  std::shuffle(sets.begin(), sets.end(), random);
  EXPECT_EQ(linkedSets(sets, 3).size(), 1u);
}

TEST(LinkedSets, ThatAllShareTwoNamesStayApart) {
  Sets sets;
  for (int i = 0; i < 300; ++i) sets.push_back({"a", "b", "own" + std::to_string(i)});
  EXPECT_EQ(linkedSets(sets, 3).size(), 300u);
}

}  // namespace
}  // namespace tiepoint::workbench
