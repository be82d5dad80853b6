#include "workbench/survey/carry_file.h"

#include <gtest/gtest.h>

#include "workbench/survey/refusal_of.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

/// A file of its own for one test.
class CarryFile : public testing::Test {
 protected:
  std::vector<StationPlace> read(const std::string& bytes) {
    writeBytes(path, bytes);
    return readCarryFile(path);
  }

  const TemporaryFolder folder;
  const std::string path = folder.file("carry.txt");
};

TEST_F(CarryFile, GivesPlacesOfStationsInItsOrder) {
  const std::vector<StationPlace> places = read("# corners\nS2 1 -2.5 1e6\n\n\"plant hall #2\";0;0;0\n7,1,2,3\n");
  ASSERT_EQ(places.size(), 3u);
  EXPECT_EQ(places[0].group, "S2");
  EXPECT_EQ(places[0].place, Eigen::Vector3d(1.0, -2.5, 1e6));
  EXPECT_EQ(places[1].group, "plant hall #2");
  EXPECT_EQ(places[2].group, "7");
  EXPECT_EQ(places[2].place, Eigen::Vector3d(1.0, 2.0, 3.0));
}

TEST_F(CarryFile, MayNameAStationManyTimes) { EXPECT_EQ(read("S1 1 2 3\nS1 1 2 3\n").size(), 2u); }

TEST_F(CarryFile, RefusesABadLine) {
  for (const char* line : {"S1", "S1 1 2", "S1 1 2 3 4", "S1 1 2 x", "S1 1 nan 3", "S1 inf 2 3", "plant hall 1 2 3",
                           "\"\" 1 2 3", "1 2 3", "S1 1,5 2 3"}) {
    const Refusal refusal = refusalOf([&] { read(std::string("S1 1 2 3\n") + line + "\n"); });
    EXPECT_EQ(refusal.kind, RefusalKind::carryLine) << line;
    EXPECT_EQ(refusal.field, Field::carryFile) << line;
    EXPECT_EQ(refusal.given, path) << line;
    EXPECT_EQ(refusal.count, 2u) << line;
  }
}

}  // namespace
}  // namespace tiepoint::workbench
