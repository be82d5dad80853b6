#include "workbench/survey/start_file.h"

#include <gtest/gtest.h>

#include <cmath>

#include "workbench/report/group_matrices.h"
#include "workbench/survey/refusal_of.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

/// What the roundings of a singular value decomposition leave.
constexpr double rounding = 1e-15;

/// A group of a file, with these rows and this translation.
std::string group(const std::string& name, const std::string& rows, const std::string& translation = "[1,2,3]") {
  return R"({"name":")" + name + R"(","registered":true,"rotation":)" + rows + R"(,"translation":)" + translation + "}";
}

const std::string quarterTurn = "[[0,-1,0],[1,0,0],[0,0,1]]";

/// A file of its own for one test.
class StartFile : public testing::Test {
 protected:
  std::vector<StationPose> read(const std::string& bytes) {
    writeBytes(path, bytes);
    return readStartFile(path);
  }
  std::vector<StationPose> readGroups(const std::string& groups) { return read(R"({"groups":[)" + groups + "]}"); }
  /// "CAUSE NAME COUNT" of a refusal.
  std::string refused(const std::string& bytes) {
    const Refusal refusal = refusalOf([&] { read(bytes); });
    EXPECT_EQ(refusal.kind, RefusalKind::startNotRead) << bytes;
    EXPECT_EQ(refusal.field, Field::startFile) << bytes;
    EXPECT_EQ(refusal.given, path) << bytes;
    return refusal.cause + " " + refusal.name + " " + std::to_string(refusal.count);
  }
  std::string refusedGroup(const std::string& json) {
    return refused(R"({"groups":[)" + group("S1", quarterTurn) + "," + json + "]}");
  }

  const TemporaryFolder folder;
  const std::string path = folder.file("poses.json");
};

TEST_F(StartFile, GivesThePosesOfRegisteredGroups) {
  const std::vector<StationPose> poses =
      readGroups(group("S1", quarterTurn) + R"(,{"name":"S2","registered":false,"rotation":null,"translation":null},)" +
                 group("зал", quarterTurn));
  ASSERT_EQ(poses.size(), 2u);
  EXPECT_EQ(poses[0].group, "S1");
  Eigen::Matrix3d turn;
  turn << 0, -1, 0, 1, 0, 0, 0, 0, 1;
  EXPECT_LT((poses[0].pose.rotation - turn).norm(), rounding);
  EXPECT_EQ(poses[0].pose.shift, Eigen::Vector3d(1, 2, 3));
  EXPECT_EQ(poses[1].group, "зал");
}

TEST_F(StartFile, ReadsWhatARegistrationWrites) {
  Registration registration;
  registration.outcome = Registered();
  registration.groups.resize(3);
  registration.groups[0].name = "base";
  registration.groups[0].inBase = true;
  registration.groups[1].name = "S \"2\"";
  OdGeMatrix3d motion;
  const double cosine = std::cos(0.3), sine = std::sin(0.3);
  motion(0, 0) = motion(1, 1) = cosine;
  motion(1, 0) = sine;
  motion(0, 1) = -sine;
  motion(2, 3) = 0.1;
  registration.groups[1].toCommon = motion;
  registration.groups[2].name = "out";
  const std::vector<StationPose> poses = read(transformsJson(registration, Unit::metre));
  ASSERT_EQ(poses.size(), 2u);
  EXPECT_LT((poses[0].pose.rotation - Eigen::Matrix3d::Identity()).norm(), rounding);
  EXPECT_EQ(poses[1].group, "S \"2\"");
  EXPECT_NEAR(poses[1].pose.rotation(1, 0), sine, rounding);
  EXPECT_EQ(poses[1].pose.shift, Eigen::Vector3d(0, 0, 0.1));
}

TEST_F(StartFile, MakesARotationOfSevenDigitsOne) {
  const std::vector<StationPose> poses =
      readGroups(group("S1", "[[0.9553365,-0.2955202,0],[0.2955202,0.9553365,0],[0,0,1]]"));
  const Eigen::Matrix3d& rotation = poses.front().pose.rotation;
  EXPECT_LT((rotation.transpose() * rotation - Eigen::Matrix3d::Identity()).norm(), rounding);
  EXPECT_NEAR(rotation(1, 0), 0.2955202, 1e-7);
}

TEST_F(StartFile, RefusesWhatIsntARotation) {
  for (const char* rows : {"[[1,0,0],[0,1,0],[0,0,-1]]", "[[2,0,0],[0,2,0],[0,0,2]]", "[[1,1e-5,0],[0,1,0],[0,0,1]]",
                           "[[0,0,0],[0,0,0],[0,0,0]]", "[[1e300,0,0],[0,1,0],[0,0,1]]"}) {
    EXPECT_EQ(refusedGroup(group("S2", rows)), "improper S2 2") << rows;
  }
}

TEST_F(StartFile, RefusesWhatIsntJsonByItsLine) {
  EXPECT_EQ(refused("S1 1 2 3\n"), "json  1");
  EXPECT_EQ(refused("{\n\"groups\":[\n"), "json  3");
  EXPECT_EQ(refused("{\"groups\":[\n]}\n\n}"), "json  4");
}

TEST_F(StartFile, RefusesNumbersThatNoDoubleHolds) {
  EXPECT_EQ(refusedGroup(group("S2", quarterTurn, "[1e999,0,0]")), "number  0");
}

TEST_F(StartFile, RefusesWhatHasNoGroups) {
  for (const char* json : {"[]", "{}", "7", R"({"groups":{}})"}) EXPECT_EQ(refused(json), "groups  0") << json;
}

TEST_F(StartFile, RefusesAGroupWithoutAName) {
  for (const char* json : {"7", "{}", R"({"name":7})"}) EXPECT_EQ(refusedGroup(json), "name  2") << json;
}

TEST_F(StartFile, RefusesAGroupThatDoesntSayWhetherItIsRegistered) {
  EXPECT_EQ(refusedGroup(R"({"name":"S2","rotation":[[1,0,0],[0,1,0],[0,0,1]],"translation":[0,0,0]})"),
            "registered S2 2");
  EXPECT_EQ(refusedGroup(R"({"name":"S2","registered":1})"), "registered S2 2");
}

TEST_F(StartFile, RefusesARotationThatIsntThreeRowsOfThree) {
  for (const char* rows : {"null", "[[1,0,0],[0,1,0]]", "[[1,0,0],[0,1,0],[0,0]]", "[1,0,0,0,1,0,0,0,1]",
                           R"([[1,0,0],[0,1,0],[0,0,"1"]])", "[[1,0,0],[0,1,0],[0,0,null]]"}) {
    EXPECT_EQ(refusedGroup(group("S2", rows)), "rotation S2 2") << rows;
  }
  EXPECT_EQ(refusedGroup(R"({"name":"S2","registered":true,"translation":[0,0,0]})"), "rotation S2 2");
}

TEST_F(StartFile, RefusesATranslationThatIsntThreeNumbers) {
  for (const char* shift : {"null", "[1,2]", "[1,2,3,4]", R"(["1",2,3])", "[1,2,null]"}) {
    EXPECT_EQ(refusedGroup(group("S2", quarterTurn, shift)), "translation S2 2") << shift;
  }
}

TEST_F(StartFile, RefusesAGroupThatIsThereTwice) { EXPECT_EQ(refusedGroup(group("S1", quarterTurn)), "twice S1 2"); }

TEST_F(StartFile, ThatIsMissingIsRefused) {
  const Refusal refusal = refusalOf([&] { readStartFile(path); });
  EXPECT_EQ(refusal.kind, RefusalKind::fileMissing);
  EXPECT_EQ(refusal.field, Field::startFile);
}

TEST_F(StartFile, MayBeOneLongLine) {
  std::string groups = group("S1", quarterTurn);
  const std::string padding(3u << 20, ' ');
  EXPECT_EQ(readGroups(groups + padding).size(), 1u);
}

}  // namespace
}  // namespace tiepoint::workbench
