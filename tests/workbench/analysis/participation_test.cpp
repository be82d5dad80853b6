#include "workbench/analysis/participation.h"

#include <gmock/gmock.h>

namespace tiepoint::workbench::analysis {
namespace {

using ::testing::ElementsAre;

/// Each row names the targets that a station sees.
Network networkOf(const std::vector<std::vector<std::size_t>>& seen, std::size_t targets) {
  Network network;
  network.stations.resize(seen.size());
  network.targets.resize(targets);
  for (std::size_t s = 0; s < seen.size(); ++s) {
    for (const std::size_t t : seen[s]) network.observations.push_back({s, t, Eigen::Vector3d::Zero(), 1.0, 1.0});
  }
  return network;
}

TEST(Participation, OfAStationNeedsThreeTargetsThatAnotherSawToo) {
  const Network network = networkOf({{0, 1, 2, 3}, {0, 1, 2}, {2, 3}}, 4);
  const Participation part = participationOf(network);
  EXPECT_THAT(part.stations, ElementsAre(true, true, false));
  EXPECT_THAT(part.targets, ElementsAre(true, true, true, false));
}

TEST(Participation, OfALevelledStationNeedsTwo) {
  Network network = networkOf({{0, 1, 2, 3}, {0, 1, 2}, {2, 3}}, 4);
  network.stations[2].levelled = true;
  EXPECT_THAT(participationOf(network).stations, ElementsAre(true, true, true));
}

TEST(Participation, EndsForAllWhenOneThatIsLeftOutTakesTheOthersAlong) {
  // The third station fails, then its targets, then those that counted on them.
  const Network network = networkOf({{0, 1, 2}, {0, 1, 3}, {2, 3}}, 4);
  const Participation part = participationOf(network);
  EXPECT_THAT(part.stations, ElementsAre(false, false, false));
  EXPECT_THAT(part.targets, ElementsAre(false, false, false, false));
}

TEST(Participation, CountsControlAsASighting) {
  Network network = networkOf({{0, 1, 2}}, 3);
  EXPECT_THAT(participationOf(network).stations, ElementsAre(false));
  for (Target& target : network.targets) target.control = Control{};
  EXPECT_THAT(participationOf(network).stations, ElementsAre(true));
}

TEST(Participation, OfATargetThatOnlyHeldStationsSawIsRefused) {
  Network network = networkOf({{0, 1, 2, 3}, {3, 0}, {0, 1, 2}}, 4);
  network.stations[0].held = network.stations[1].held = true;
  const Participation part = participationOf(network);
  EXPECT_THAT(part.targets, ElementsAre(true, true, true, false));
  EXPECT_THAT(part.stations, ElementsAre(true, true, true));
}

TEST(Participation, OfTwoPointsOfOneNameIsTheLast) {
  Network network = networkOf({{0, 1, 2, 1}, {0, 1, 2}}, 3);
  EXPECT_THAT(participationOf(network).observations, ElementsAre(true, false, true, true, true, true, true));
}

}  // namespace
}  // namespace tiepoint::workbench::analysis
