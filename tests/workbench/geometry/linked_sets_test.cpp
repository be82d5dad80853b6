#include "workbench/geometry/linked_sets.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <random>

#include "workbench/geometry/plain_linked_sets.h"

namespace tiepoint::workbench {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
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

/// Few names, so that many sets share just too few or just enough.
rc::Gen<Sets> crowdedSets() {
  const auto name = rc::gen::map(rc::gen::inRange(0, 24), [](int i) { return "n" + std::to_string(i); });
  return rc::gen::container<Sets>(rc::gen::scale(0.06, rc::gen::container<std::set<std::string>>(name)));
}

RC_GTEST_PROP(LinkedSets, AreThoseOfAScanThatStartsAgain, ()) {
  const Sets sets = *crowdedSets();
  const std::size_t least = *rc::gen::inRange<std::size_t>(1, 5);
  const auto parts = linkedSets(sets, least);
  RC_CLASSIFY(parts.size() > 1 && parts.size() < sets.size());
  RC_ASSERT(parts == tiepoint::testing::plainLinkedSets(sets, least));
}

/// Each set hangs on all before it together, by one name of each of three, and on none alone.
Sets chain(std::size_t count) {
  const auto own = [](std::size_t set, const char* which) { return std::to_string(set) + which; };
  Sets sets{{"0a", "0b", "0c"}, {"0a", "0b", "0c", "1a", "1b"}};
  for (std::size_t k = 2; k < count; ++k) {
    sets.push_back({own(k - 2, "a"), own(k - 1, "a"), own(k - 1, "b"), own(k, "a"), own(k, "b")});
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
