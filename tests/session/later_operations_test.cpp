// Operations that this version of the module doesn't have refuse by a clear error; none gives an
// answer that looks like a result.
#include <gtest/gtest.h>

#include <functional>

#include "support/session_builder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

TEST(LaterOperations, SayThatTheyAreNotAvailable) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  Outputs out;
  std::map<RefPointId, std::string> texts{{7, "kept"}};
  std::vector<std::uint64_t> counts{7};
  std::vector<double> edges{7.0};
  const std::map<std::string, std::function<void()>> operations{
      {"matchPointsByDistance",
       [&] { session->matchPointsByDistance(0.1, texts, out.inactiveGroups, out.inactivePoints); }},
      {"matchGroupsByTriangles",
       [&] { session->matchGroupsByTriangles({0}, 0.1, 0.1, texts, out.inactiveGroups, out.inactivePoints); }},
      {"matchAllGroupsByTriangles",
       [&] { session->matchAllGroupsByTriangles(0.1, 0.1, texts, out.inactiveGroups, out.inactivePoints); }},
      {"getMaxPointSpread", [&] { session->getMaxPointSpread(); }},
      {"getPointSpreadHistogram", [&] { session->getPointSpreadHistogram(counts, edges); }},
  };
  for (const auto& [name, operation] : operations) {
    try {
      operation();
      ADD_FAILURE() << name << " gave an answer";
    } catch (const OdError& error) {
      EXPECT_EQ(error.code(), eNotApplicable) << name;
      EXPECT_EQ(std::string(error.what()), name + " isn't available in this version of the module");
    }
  }
  EXPECT_EQ(texts.size(), 1u);
  EXPECT_EQ(counts.size(), 1u);
  EXPECT_EQ(out.inactivePoints, RefPointIdSet{994});
}

}  // namespace
