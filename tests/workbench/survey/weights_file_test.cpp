#include "workbench/survey/weights_file.h"

#include <gtest/gtest.h>

#include "workbench/report/refusal_text.h"
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

}  // namespace
}  // namespace tiepoint::workbench
