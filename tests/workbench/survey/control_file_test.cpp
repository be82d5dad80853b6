#include "workbench/survey/control_file.h"

#include <gtest/gtest.h>

#include "workbench/survey/refusal_of.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

/// A file of its own for one test.
class ControlFile : public testing::Test {
 protected:
  std::vector<ControlTarget> read(const std::string& bytes) {
    writeBytes(path, bytes);
    return readControlFile(path);
  }
  /// The only target of a line.
  ControlTarget target(const std::string& line) {
    const std::vector<ControlTarget> targets = read(line + "\n");
    EXPECT_EQ(targets.size(), 1u) << line;
    return targets.empty() ? ControlTarget() : targets.front();
  }
  /// Its covariance; zeros for one that is held.
  Eigen::Matrix3d covariance(const std::string& line) {
    return target(line).control.covariance.value_or(Eigen::Matrix3d::Zero());
  }
  bool isHeld(const std::string& line) { return !target(line).control.covariance; }
  /// What a second line is refused with.
  Refusal refused(const std::string& line) {
    const Refusal refusal = refusalOf([&] { read("T0 1 2 3\n" + line + "\n"); });
    EXPECT_EQ(refusal.field, Field::controlFile) << line;
    EXPECT_EQ(refusal.given, path) << line;
    EXPECT_EQ(refusal.count, 2u) << line;
    return refusal;
  }

  const TemporaryFolder folder;
  const std::string path = folder.file("control.txt");
};

Eigen::Matrix3d diagonal(double xx, double yy, double zz) { return Eigen::Vector3d(xx, yy, zz).asDiagonal(); }

TEST_F(ControlFile, GivesTargetsTheirPlacesInItsOrder) {
  const std::vector<ControlTarget> targets = read("# benchmarks\nB 1 -2.5 4500000.25\n\r\nA;0;0;1e-3 # new\n");
  ASSERT_EQ(targets.size(), 2u);
  EXPECT_EQ(targets[0].name, "B");
  EXPECT_EQ(targets[0].control.place, Eigen::Vector3d(1.0, -2.5, 4500000.25));
  EXPECT_FALSE(targets[0].control.covariance);
  EXPECT_EQ(targets[1].name, "A");
  EXPECT_EQ(targets[1].control.place, Eigen::Vector3d(0.0, 0.0, 0.001));
}

TEST_F(ControlFile, TakesOneSigmaForAllCoordinates) {
  EXPECT_EQ(covariance("T1 1 2 3 0.5"), diagonal(0.25, 0.25, 0.25));
}

TEST_F(ControlFile, TakesASigmaForEachCoordinate) {
  EXPECT_EQ(covariance("T1 1 2 3 0.5 2 4"), diagonal(0.25, 4.0, 16.0));
}

TEST_F(ControlFile, TakesCovariancesRowByRow) {
  Eigen::Matrix3d rows;
  rows << 4.0, 0.5, -0.25, 0.5, 9.0, 1.0, -0.25, 1.0, 16.0;
  EXPECT_EQ(covariance("T1 1 2 3 4 0.5 -0.25 9 1 16"), rows);
}

TEST_F(ControlFile, HoldsTargetsOfNoSigma) {
  EXPECT_TRUE(isHeld("T1 1 2 3"));
  EXPECT_TRUE(isHeld("T1 1 2 3 0"));
  EXPECT_TRUE(isHeld("T1 1 2 3 0 0 0"));
  EXPECT_TRUE(isHeld("T1 1 2 3 0 0 0 0 0 0"));
}

TEST_F(ControlFile, TakesSmallAndGreatSigmas) {
  EXPECT_EQ(covariance("T1 1 2 3 1e-9 1 1e9"), diagonal(1e-9 * 1e-9, 1.0, 1e18));
}

TEST_F(ControlFile, TakesTheFirstFieldAsTheNameWhateverItIs) {
  EXPECT_EQ(target("101 1 2 3").name, "101");
  EXPECT_EQ(target("\"bolt 7, east\" 1 2 3").name, "bolt 7, east");
  EXPECT_EQ(target("\"#4\" 1 2 3").name, "#4");
  EXPECT_EQ(target("\xEF\xBB\xBFзнак 1 2 3").name, "знак");
}

TEST_F(ControlFile, RefusesABadLine) {
  for (const char* line : {"T1",
                           "T1 1",
                           "T1 1 2",
                           "1 2 3",
                           "T1 1 2 3 1 1",
                           "T1 1 2 3 1 1 1 1",
                           "T1 1 2 3 1 1 1 1 1",
                           "T1 1 2 3 1 0 0 1 0 1 7",
                           "T1 1 2 x",
                           "T1 1 2 nan",
                           "T1 1 inf 3",
                           "T1 1 2 3 -1",
                           "T1 1 2 3 nan",
                           "T1 1 2 3 1 -1 1",
                           "T1 1 2 3 0 -1 0",
                           "T1 1 2 3 1 0 0 1 0 nan",
                           "T1 1,5 2 3",
                           "plant hall 1 2 3",
                           "\"T1 1 2 3",
                           "\"\" 1 2 3"}) {
    EXPECT_EQ(refused(line).kind, RefusalKind::controlLine) << line;
  }
}

TEST_F(ControlFile, RefusesAMatrixThatIsntPositiveDefinite) {
  for (const char* line : {"T1 1 2 3 0 1 1", "T1 1 2 3 1 1 0", "T1 1 2 3 1 1 0 1 0 1", "T1 1 2 3 1 2 0 1 0 1",
                           "T1 1 2 3 -1 0 0 -1 0 -1", "T1 1 2 3 1 0 0 1 0 0", "T1 1 2 3 0 1 0 0 0 0",
                           "T1 1 2 3 0.01 0.02 0.03 0.04 0.06 0.09", "T1 1 2 3 1e-200", "T1 1 2 3 1e200"}) {
    const Refusal refusal = refused(line);
    EXPECT_EQ(refusal.kind, RefusalKind::controlNotDefinite) << line;
    EXPECT_EQ(refusal.name, "T1") << line;
  }
}

TEST_F(ControlFile, RefusesAMatrixThatIsSingularButForItsRoundings) {
  EXPECT_EQ(refused("T1 1 2 3 1 0.99999999999999 0 1 0 1").kind, RefusalKind::controlNotDefinite);
  EXPECT_EQ(refused("T1 1 2 3 1e-12 0.99999999999999 0 1e12 0 1").kind, RefusalKind::controlNotDefinite)
      << "whatever the sizes of the variances";
}

TEST_F(ControlFile, TakesAMatrixOfGreatCorrelation) {
  EXPECT_EQ(covariance("T1 1 2 3 1 0.999999 0 1 0 1")(0, 1), 0.999999);
}

TEST_F(ControlFile, CountsEqualLinesOnce) { EXPECT_EQ(read("T1 1 2 3 0.5\nT2 0 0 0\nT1 1.0 2 3 0.5\n").size(), 2u); }

TEST_F(ControlFile, RefusesASecondLineThatDiffers) {
  for (const char* line : {"T0 1 2 3.5", "T0 1 2 3 0.5", "\"T0\" 0 2 3"}) {
    const Refusal refusal = refused(line);
    EXPECT_EQ(refusal.kind, RefusalKind::controlTwice) << line;
    EXPECT_EQ(refusal.name, "T0") << line;
  }
}

}  // namespace
}  // namespace tiepoint::workbench
