#include "workbench/report/cloud_text.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

CloudReport cloud(const char* name, CloudMove move) {
  CloudReport report;
  report.name = name;
  report.source = std::string(name) + ".xyz";
  report.move = move;
  return report;
}

TEST(MatrixText, StandsRowByRowWithTheTranslationInTheLastColumn) {
  OdGeMatrix3d matrix;
  matrix(0, 1) = -0.5;
  matrix(0, 3) = 500000.1;
  matrix(2, 3) = 0.1 + 0.2;
  EXPECT_EQ(matrixText(matrix),
            "  1  -0.5  0             500000.1\n"
            "  0     1  0                    0\n"
            "  0     0  1  0.30000000000000004\n"
            "  0     0  0                    1\n");
}

TEST(CloudMovesText, SaysWhatBecameOfEachCloud) {
  EXPECT_EQ(cloudMovesText({cloud("S1", CloudMove::base), cloud("S2", CloudMove::notAsked),
                            cloud("S3", CloudMove::notRegistered), cloud("crane", CloudMove::noGroup)}),
            "Clouds\n"
            "  S1     stays: its group is the base       S1.xyz\n"
            "  S2     stays: --apply moves the clouds    S2.xyz\n"
            "  S3     stays: its group isn't registered  S3.xyz\n"
            "  crane  stays: no group has its name       crane.xyz\n");
}

TEST(CloudMovesText, HasTheMatrixOfACloudThatMoved) {
  CloudReport moved = cloud("S2", CloudMove::moved);
  moved.matrix(1, 3) = 2.5;
  EXPECT_EQ(cloudMovesText({moved, cloud("S3", CloudMove::notRegistered)}),
            "Clouds\n"
            "  S2  moved                              S2.xyz\n"
            "  S3  stays: its group isn't registered  S3.xyz\n"
            "\n"
            "S2: from its file to the common system, row by row\n"
            "  1  0  0    0\n"
            "  0  1  0  2.5\n"
            "  0  0  1    0\n"
            "  0  0  0    1\n");
}

TEST(CloudMovesText, CountsWhatWasCopied) {
  CloudReport plain = cloud("S1", CloudMove::base);
  plain.copy = CloudCopy{"moved/S1.xyz", 12, 0};
  CloudReport commented = cloud("S2", CloudMove::base);
  commented.copy = CloudCopy{"moved/S2.xyz", 7, 3};
  EXPECT_EQ(cloudMovesText({plain, commented}),
            "Clouds\n"
            "  S1  stays: its group is the base  S1.xyz\n"
            "  S2  stays: its group is the base  S2.xyz\n"
            "\n"
            "S1: 12 points written to moved/S1.xyz\n"
            "S2: 7 points written to moved/S2.xyz, 3 other lines copied unchanged\n");
}

TEST(CloudMovesText, PrintsNoControlCharacterOfAName) {
  CloudReport report = cloud("S\x1b", CloudMove::moved);
  report.copy = CloudCopy{"a\nb", 1, 0};
  const std::string text = cloudMovesText({report});
  EXPECT_NE(text.find("  S?  moved  S?.xyz\n"), std::string::npos);
  EXPECT_NE(text.find("\nS?: from its file"), std::string::npos);
  EXPECT_NE(text.find("\nS?: 1 points written to a?b\n"), std::string::npos);
}

}  // namespace
}  // namespace tiepoint::workbench
