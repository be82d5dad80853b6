#include "workbench/survey/weights_file.h"

#include <gtest/gtest.h>

#include "workbench/report/refusal_text.h"
#include "workbench/survey/refusal_of.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

std::string refusal(const std::string& path) {
  try {
    readWeightsFile(path);
  } catch (const Refused& refused) {
    EXPECT_EQ(refusalClass(refused.refusal().kind), RefusalClass::file);
    return refusalText(refused.refusal());
  }
  return "nothing";
}

/// The only reading of a choice.
std::string refOf(const WeightChoice& choice) {
  if (choice.points.readings.size() != 1) return "several readings";
  return choice.points.readings[0].group + "|" + choice.points.readings[0].point.value_or("");
}

TEST(WeightsFile, LinesAreGroupPointWeight) {
  const TemporaryFolder folder;
  const std::string path = folder.file("weights.txt");
  writeBytes(path, "# weights of the hall\nS1 T1 0.5\n\n  S2;T2; 1 # near\nplant hall\tT3\t0\r\n");
  const std::vector<WeightChoice> weights = readWeightsFile(path);
  ASSERT_EQ(weights.size(), 3u);
  EXPECT_EQ(refOf(weights[0]), "S1|T1");
  EXPECT_EQ(weights[0].weight, 0.5);
  EXPECT_EQ(refOf(weights[1]), "S2|T2");
  EXPECT_EQ(weights[1].weight, 1.0);
  EXPECT_EQ(refOf(weights[2]), "plant hall|T3");
  EXPECT_EQ(weights[2].weight, 0.0);
}

TEST(WeightsFile, ABadLineIsNamed) {
  const TemporaryFolder folder;
  const std::string path = folder.file("weights.txt");
  for (const char* line : {"S1 T1", "S1 T1 2", "T1 0.5", "S1 T1 heavy"}) {
    writeBytes(path, std::string("S1 T1 1\n") + line + "\n");
    EXPECT_EQ(refusal(path), path + ": line 2 isn't \"GROUP POINT WEIGHT\" with a weight from 0 to 1") << line;
  }
}

TEST(WeightsFile, AGroupWithAColonIsAGroupOfThatName) {
  const TemporaryFolder folder;
  const std::string path = folder.file("weights.txt");
  writeBytes(path, "A:B C 0.5\n");
  const std::vector<WeightChoice> weights = readWeightsFile(path);
  ASSERT_EQ(weights.size(), 1u);
  EXPECT_EQ(refOf(weights[0]), "A:B|C");
}

TEST(WeightOfText, IsANumberFromZeroToOne) {
  EXPECT_EQ(weightOfText("0"), 0.0);
  EXPECT_EQ(weightOfText("1"), 1.0);
  EXPECT_EQ(weightOfText("1.0000"), 1.0);
  EXPECT_EQ(weightOfText("2.5e-1"), 0.25);
  EXPECT_EQ(weightOfText(".5"), 0.5);
}

TEST(WeightOfText, IsTheWholeOfTheText) {
  for (const char* text :
       {"", " ", "0.5 ", " 0.5", "0.5x", "0,5", "+0.5", "0x1", "-0.1", "1.1", "nan", "inf", "1e-999"}) {
    EXPECT_EQ(weightOfText(text), std::nullopt) << "'" << text << "'";
  }
}

/// A file of its own for one test.
class WeightsFileOf : public testing::Test {
 protected:
  std::vector<WeightChoice> read(const std::string& bytes) {
    writeBytes(path, bytes);
    return readWeightsFile(path);
  }

  const TemporaryFolder folder;
  const std::string path = folder.file("weights.txt");
};

TEST_F(WeightsFileOf, CommentsAloneHoldsNoWeights) { EXPECT_TRUE(read("# S1 T1 1\n \t\r\n,;\n").empty()); }

TEST_F(WeightsFileOf, AnyRunOfSeparatorsSeparates) {
  const std::vector<WeightChoice> weights = read(";,S1 ,;\t T1  ;0.5;,\r\n");
  ASSERT_EQ(weights.size(), 1u);
  EXPECT_EQ(refOf(weights[0]), "S1|T1");
  EXPECT_EQ(weights[0].weight, 0.5);
}

TEST_F(WeightsFileOf, TheLastLineNeedsNoEnd) {
  const std::vector<WeightChoice> weights = read("S1 T1 1\nS2 T2 0.5");
  ASSERT_EQ(weights.size(), 2u);
  EXPECT_EQ(refOf(weights[1]), "S2|T2");
}

TEST_F(WeightsFileOf, AChoiceTellsWhatWasGiven) {
  const std::vector<WeightChoice> weights = read("plant  hall T3 0.25\n");
  ASSERT_EQ(weights.size(), 1u);
  EXPECT_EQ(weights[0].points.given, "plant  hall:T3");
}

TEST_F(WeightsFileOf, NamesAreUtf8) {
  const std::vector<WeightChoice> weights = read("зал Т3 0.25\n");
  ASSERT_EQ(weights.size(), 1u);
  EXPECT_EQ(refOf(weights[0]), "зал|Т3");
}

TEST_F(WeightsFileOf, MayBeginWithAByteOrderMark) {
  const std::vector<WeightChoice> weights = read("\xEF\xBB\xBFS1 T1 0.5\n");
  ASSERT_EQ(weights.size(), 1u);
  EXPECT_EQ(refOf(weights[0]), "S1|T1");
}

TEST_F(WeightsFileOf, KnowsNoQuotationMarks) {
  const std::vector<WeightChoice> weights = read("\"S1\" T1 1 # \"none\n\"S 2\" T2 0.5\n");
  ASSERT_EQ(weights.size(), 2u);
  EXPECT_EQ(refOf(weights[0]), "\"S1\"|T1");
  EXPECT_EQ(refOf(weights[1]), "\"S 2\"|T2");
  EXPECT_EQ(refusalOf([&] { read("\"S#1\" T1 1\n"); }).kind, RefusalKind::weightsLine) << "a comment begins";
}

TEST_F(WeightsFileOf, NamesALineThatIsntUtf8) {
  const Refusal refusal = refusalOf([&] { read("S1 T1 1\n\xE7 T1 1\n"); });
  EXPECT_EQ(refusal.kind, RefusalKind::weightsLine);
  EXPECT_EQ(refusal.field, Field::weightsFile);
  EXPECT_EQ(refusal.count, 2u);
  EXPECT_EQ(refusal.cause, "the byte 0xE7 at offset 0 isn't UTF-8");
}

TEST_F(WeightsFileOf, ABadLineIsCountedWithBlankOnesAndComments) {
  const Refusal refusal = refusalOf([&] { read("\n# all\nS1 T1 1\nS1 T2 -0.5\nS1 T3 x\n"); });
  EXPECT_EQ(refusal.kind, RefusalKind::weightsLine);
  EXPECT_EQ(refusal.field, Field::weightsFile);
  EXPECT_EQ(refusal.given, path);
  EXPECT_EQ(refusal.count, 4u);
}

TEST_F(WeightsFileOf, ANumberAloneIsABadLine) {
  EXPECT_EQ(refusalOf([&] { read("0.5\n"); }).kind, RefusalKind::weightsLine);
}

TEST_F(WeightsFileOf, AFileThatCantBeReadIsRefusedAsAnyOther) {
  EXPECT_EQ(refusalOf([&] { readWeightsFile(path); }).kind, RefusalKind::fileMissing);
  EXPECT_EQ(refusalOf([&] { readWeightsFile(folder.file("")); }).kind, RefusalKind::fileIsFolder);
  EXPECT_EQ(refusalOf([&] { read(""); }).kind, RefusalKind::fileEmpty);
}

}  // namespace
}  // namespace tiepoint::workbench
