#include "workbench/report/group_matrices.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

namespace tiepoint::workbench {
namespace {

using nlohmann::json;

/// A turn by 30 degrees about Z, then a shift.
OdGeMatrix3d workedExample() {
  OdGeMatrix3d motion;
  motion(0, 0) = motion(1, 1) = 0.8660254037844386;
  motion(0, 1) = -0.5;
  motion(1, 0) = 0.5;
  motion(0, 3) = 10.0;
  motion(1, 3) = -2.5;
  motion(2, 3) = 0.125;
  return motion;
}

TEST(PlainMatrixText, StandsRowByRowWithTheTranslationInTheLastColumn) {
  EXPECT_EQ(plainMatrixText(workedExample()),
            "0.8660254037844386 -0.5 0 10\n"
            "0.5 0.8660254037844386 0 -2.5\n"
            "0 0 1 0.125\n"
            "0 0 0 1\n");
}

TEST(PlainMatrixText, OfTheIdentityHoldsOnesAndZeros) {
  EXPECT_EQ(plainMatrixText(OdGeMatrix3d()), "1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n");
}

TEST(PlainMatrixText, Has17SignificantDigits) {
  OdGeMatrix3d motion;
  motion(0, 3) = 500000.1;
  EXPECT_EQ(plainMatrixText(motion).substr(0, 25), "1 0 0 500000.09999999998\n");
}

/// A base, a group that is turned and one that isn't registered.
class Transforms : public testing::Test {
 protected:
  Transforms() {
    registration.method = RegistrationMethod::iterative;
    for (const char* name : {"Base", "A", "Out"}) {
      registration.groups.emplace_back().name = name;
      registration.points.emplace_back().group = registration.groups.size() - 1;
      registration.points.back().name = "P1";
      registration.points.back().active = true;
    }
    registration.groups[0].inBase = true;
    registration.groups[1].toCommon = workedExample();
    registration.groups[1].discrepancies = Rms{1, 0.25, 0.25, 0.25};
    registration.points[1].discrepancy = 0.25;
    registration.points[1].atBase = 0.5;
    Registered registered;
    registered.discrepancies = Rms{1, 0.25, 0.25, 0.25};
    registration.outcome = registered;
  }
  json made(Unit unit = Unit::metre) const { return json::parse(transformsJson(registration, unit)); }

  Registration registration;
};

TEST_F(Transforms, SayTheirConventionInWords) {
  EXPECT_EQ(made()["convention"],
            json::parse(R"({"direction":"from the group's own system to the common system: p' = rotation p + )"
                        R"(translation","vectors":"column vectors; the rotation stands row by row",)"
                        R"("quaternion":"order w x y z, unit length, w not negative","unit":"m"})"));
  EXPECT_EQ(made(Unit::unknown)["convention"]["unit"], "the files' own");
}

TEST_F(Transforms, NameTheMethod) {
  EXPECT_EQ(made()["method"], "iterative");
  registration.method = RegistrationMethod::pairwise;
  EXPECT_EQ(made()["method"], "pairwise");
  registration.method = RegistrationMethod::adjust;
  EXPECT_EQ(made()["method"], "adjust");
}

TEST_F(Transforms, GiveARegisteredGroupsMotionAsRowsAndAsAQuaternion) {
  const json group = made()["groups"][1];
  EXPECT_EQ(group["name"], "A");
  EXPECT_EQ(group["registered"], true);
  EXPECT_EQ(group["rotation"], json::parse("[[0.8660254037844386,-0.5,0.0],[0.5,0.8660254037844386,0.0],"
                                           "[0.0,0.0,1.0]]"));
  EXPECT_EQ(group["translation"], json::parse("[10.0,-2.5,0.125]"));
  // The cosine and the sine of 15 degrees, within the rounding of a few operations.
  EXPECT_NEAR(group["quaternionWXYZ"][0], 0.96592582628906831, 1e-15);
  EXPECT_EQ(group["quaternionWXYZ"][1], 0.0);
  EXPECT_EQ(group["quaternionWXYZ"][2], 0.0);
  EXPECT_NEAR(group["quaternionWXYZ"][3], 0.25881904510252074, 1e-15);
}

TEST_F(Transforms, GiveTheResidualsOfEachPoint) {
  const json group = made()["groups"][1];
  EXPECT_EQ(group["points"], json::parse(R"([{"name":"P1","active":true,"discrepancy":0.25,"atBase":0.5}])"));
  EXPECT_EQ(group["discrepancies"], json::parse(R"({"points":1,"mean":0.25,"rms":0.25,"largest":0.25})"));
  EXPECT_EQ(made()["discrepancies"]["rms"], 0.25);
}

TEST_F(Transforms, GiveABaseTheIdentity) {
  const json base = made()["groups"][0];
  EXPECT_EQ(base["base"], true);
  EXPECT_EQ(base["rotation"], json::parse("[[1.0,0.0,0.0],[0.0,1.0,0.0],[0.0,0.0,1.0]]"));
  EXPECT_EQ(base["quaternionWXYZ"], json::parse("[1.0,0.0,0.0,0.0]"));
}

TEST_F(Transforms, GiveAGroupThatIsntRegisteredNothing) {
  const json group = made()["groups"][2];
  EXPECT_EQ(group["registered"], false);
  EXPECT_TRUE(group["rotation"].is_null());
  EXPECT_TRUE(group["translation"].is_null());
  EXPECT_TRUE(group["quaternionWXYZ"].is_null());
}

TEST_F(Transforms, TurnMoreThanHalfWayWithAPositiveW) {
  OdGeMatrix3d motion;
  // 240 degrees about Z: the same as -120.
  motion(0, 0) = motion(1, 1) = -0.5;
  motion(0, 1) = 0.86602540378443865;
  motion(1, 0) = -0.86602540378443865;
  registration.groups[1].toCommon = motion;
  const json quaternion = made()["groups"][1]["quaternionWXYZ"];
  EXPECT_NEAR(quaternion[0], 0.5, 1e-15);
  EXPECT_NEAR(quaternion[3], -0.86602540378443865, 1e-15);
}

}  // namespace
}  // namespace tiepoint::workbench
