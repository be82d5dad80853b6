#include "workbench/report/outputs.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "workbench/report/registrations.h"

namespace tiepoint::workbench {
namespace {

std::string pathIn(const std::string& folder, const std::string& file) {
  return (std::filesystem::path(folder) / file).string();
}

TEST(Outputs, AreNoneUnlessTheyAreAskedFor) { EXPECT_TRUE(outputs(twoStations(), {}, Unit::metre).empty()); }

TEST(Outputs, HaveAMatrixForEachGroupThatHasAMotionAndTheBase) {
  Registration registration = twoStations();
  registration.groups.emplace_back().name = "not registered";
  OutputRequest wanted;
  wanted.matrices = "matrices";
  const std::vector<OutputFile> files = outputs(registration, wanted, Unit::metre);
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].target.field, Field::matrices);
  EXPECT_EQ(files[0].target.path, pathIn("matrices", "Base.txt"));
  EXPECT_EQ(files[0].content(), "1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n");
  EXPECT_EQ(files[1].target.path, pathIn("matrices", "A.txt"));
  EXPECT_EQ(files[1].content(), "1 0 0 10\n0 1 0 -2.5\n0 0 1 0.125\n0 0 0 1\n");
}

TEST(Outputs, LeaveTheOtherMatrixFormatsToTheModule) {
  OutputRequest wanted;
  wanted.matrices = "matrices";
  wanted.matrixFormat = MatrixFormat::trf;
  EXPECT_TRUE(outputs(twoStations(), wanted, Unit::metre).empty());
  wanted.matrixFormat = MatrixFormat::plain;
  EXPECT_EQ(outputs(twoStations(), wanted, Unit::metre).size(), 2u);
}

TEST(Outputs, HaveTheTransformationsAndThePictureWhenTheirTurnComes) {
  OutputRequest wanted;
  wanted.transforms = "all.json";
  wanted.picture = "hall.png";
  int painted = 0;
  const Registration registration = twoStations();
  const std::vector<OutputFile> files = outputs(registration, wanted, Unit::millimetre, [&] {
    ++painted;
    return std::string("bytes");
  });
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].target.field, Field::transforms);
  EXPECT_EQ(files[0].target.path, "all.json");
  EXPECT_NE(files[0].content().find("\"unit\": \"mm\""), std::string::npos);
  EXPECT_EQ(files[1].target.field, Field::picture);
  EXPECT_EQ(painted, 0);
  EXPECT_EQ(files[1].content(), "bytes");
}

TEST(Outputs, AreNoneOfASurveyThatIsntRegistered) {
  OutputRequest wanted;
  wanted.matrices = "matrices";
  wanted.transforms = "all.json";
  wanted.picture = "hall.png";
  Registration registration = twoStations();
  registration.outcome = NotConnected();
  EXPECT_TRUE(outputs(registration, wanted, Unit::metre).empty());
}

}  // namespace
}  // namespace tiepoint::workbench
