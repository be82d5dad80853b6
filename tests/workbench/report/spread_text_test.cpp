#include "workbench/report/spread_text.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

PointSpread tenBins(std::vector<std::uint64_t> counts) {
  return {0.0102349,
          std::move(counts),
          {0.0002, 0.0012, 0.0022, 0.0032, 0.0042, 0.0052, 0.0062, 0.0072, 0.0082, 0.0092, 0.010234}};
}

TEST(SpreadText, DrawsAMarkForEachDistance) {
  EXPECT_EQ(spreadText(tenBins({3, 12, 7, 0, 0, 0, 0, 0, 0, 1}), LengthFormat(Unit::metre)),
            "Spread (mm): distances between registered points of the same name; largest 10.235\n"
            "   from      to  distances\n"
            "  0.200   1.200          3  ###\n"
            "  1.200   2.200         12  ############\n"
            "  2.200   3.200          7  #######\n"
            "  3.200   4.200          0\n"
            "  4.200   5.200          0\n"
            "  5.200   6.200          0\n"
            "  6.200   7.200          0\n"
            "  7.200   8.200          0\n"
            "  8.200   9.200          0\n"
            "  9.200  10.234          1  #\n");
}

TEST(SpreadText, DrawsInProportionWhatIsTooMuchForALine) {
  EXPECT_EQ(spreadText(tenBins({4000, 2000, 150, 1, 0, 0, 0, 0, 0, 99}), LengthFormat(Unit::unknown)),
            "Spread (drawing units): distances between registered points of the same name; largest 0.010235\n"
            "      from        to  distances\n"
            "  0.000200  0.001200       4000  ########################################\n"
            "  0.001200  0.002200       2000  ####################\n"
            "  0.002200  0.003200        150  #\n"
            "  0.003200  0.004200          1  #\n"
            "  0.004200  0.005200          0\n"
            "  0.005200  0.006200          0\n"
            "  0.006200  0.007200          0\n"
            "  0.007200  0.008200          0\n"
            "  0.008200  0.009200          0\n"
            "  0.009200  0.010234         99  #\n");
}

TEST(SpreadText, HasALineOfFortyMarksForFortyDistances) {
  const std::string text = spreadText(tenBins({40, 1, 41, 0, 0, 0, 0, 0, 0, 0}), LengthFormat(Unit::millimetre));
  EXPECT_NE(text.find("41  ########################################\n"), std::string::npos);
  EXPECT_NE(text.find("40  #######################################\n"), std::string::npos);
  const std::string small = spreadText(tenBins({40, 1, 39, 0, 0, 0, 0, 0, 0, 0}), LengthFormat(Unit::millimetre));
  EXPECT_NE(small.find("40  ########################################\n"), std::string::npos);
  EXPECT_NE(small.find("39  #######################################\n"), std::string::npos);
}

TEST(SpreadText, IsEmptyWithoutAHistogram) {
  EXPECT_EQ(spreadText({0.5, {}, {}}, LengthFormat(Unit::metre)), "");
  EXPECT_EQ(spreadText({}, LengthFormat(Unit::metre)), "");
}

/// The two operations of a session.
struct StubSession {
  double getMaxPointSpread() {
    if (largestFails) throw boost::math::rounding_error("no finite number");
    return 0.25;
  }
  bool getPointSpreadHistogram(std::vector<std::uint64_t>& counts, std::vector<double>& edges) {
    if (!solved) return false;
    counts = {1, 2};
    edges = {0.0, 0.1, 0.2};
    if (histogramFails) throw boost::math::rounding_error("no finite number");
    return true;
  }
  bool solved = true;
  bool largestFails = false;
  bool histogramFails = false;
};

TEST(PointSpread, IsWhatTheSessionTells) {
  StubSession session;
  const PointSpread spread = pointSpreadOf(session);
  EXPECT_EQ(spread.largest, 0.25);
  EXPECT_EQ(spread.counts, (std::vector<std::uint64_t>{1, 2}));
  EXPECT_EQ(spread.edges, (std::vector<double>{0.0, 0.1, 0.2}));
}

TEST(PointSpread, HasNoHistogramWithoutTransformations) {
  StubSession session;
  session.solved = false;
  EXPECT_EQ(pointSpreadOf(session).largest, 0.25);
  EXPECT_TRUE(pointSpreadOf(session).counts.empty());
}

TEST(PointSpread, IsUnknownWhereADistanceIsNoFiniteNumber) {
  StubSession largest;
  largest.largestFails = true;
  EXPECT_FALSE(pointSpreadOf(largest).largest);
  StubSession histogram;
  histogram.histogramFails = true;
  EXPECT_FALSE(pointSpreadOf(histogram).largest);
  EXPECT_TRUE(pointSpreadOf(histogram).counts.empty());
  EXPECT_TRUE(pointSpreadOf(histogram).edges.empty());
}

}  // namespace
}  // namespace tiepoint::workbench
