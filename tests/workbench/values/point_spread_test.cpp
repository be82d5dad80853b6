#include "workbench/values/point_spread.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The two operations of a session, with answers of the test's.
struct AnsweringSession {
  double getMaxPointSpread() {
    if (throwAt == 1) throw boost::math::rounding_error("beyond the numbers");
    if (throwAt == 3) throw std::runtime_error("the host's");
    return largest;
  }
  bool getPointSpreadHistogram(std::vector<std::uint64_t>& counts, std::vector<double>& edges) {
    counts = {3, 0, 1};
    edges = {0.0, 0.5, 1.0, 1.5};
    if (throwAt == 2) throw boost::math::rounding_error("beyond the numbers");
    return hasHistogram;
  }

  double largest = 0.25;
  bool hasHistogram = true;
  int throwAt = 0;
};

TEST(PointSpreadOf, ASessionIsWhatItTells) {
  AnsweringSession session;
  const PointSpread spread = pointSpreadOf(session);
  EXPECT_EQ(spread.largest, 0.25);
  EXPECT_THAT(spread.counts, ElementsAre(3, 0, 1));
  EXPECT_THAT(spread.edges, ElementsAre(0.0, 0.5, 1.0, 1.5));
}

TEST(PointSpreadOf, ASessionWithoutDistancesIsZero) {
  AnsweringSession session;
  session.largest = 0.0;
  session.hasHistogram = false;
  EXPECT_EQ(pointSpreadOf(session).largest, 0.0);
}

TEST(PointSpreadOf, TooFewDistancesForBinsHasNone) {
  AnsweringSession session;
  session.hasHistogram = false;
  const PointSpread spread = pointSpreadOf(session);
  EXPECT_EQ(spread.largest, 0.25);
  EXPECT_THAT(spread.counts, IsEmpty());
  EXPECT_THAT(spread.edges, IsEmpty());
}

TEST(PointSpreadOf, ADistanceThatIsNoFiniteNumberIsNothingAtAll) {
  for (const int place : {1, 2}) {
    AnsweringSession session;
    session.throwAt = place;
    const PointSpread spread = pointSpreadOf(session);
    EXPECT_FALSE(spread.largest) << place;
    EXPECT_THAT(spread.counts, IsEmpty()) << place;
    EXPECT_THAT(spread.edges, IsEmpty()) << place;
  }
}

TEST(PointSpreadOf, AnyOtherErrorGoesOn) {
  AnsweringSession session;
  session.throwAt = 3;
  EXPECT_THROW(pointSpreadOf(session), std::runtime_error);
}

}  // namespace
}  // namespace tiepoint::workbench
