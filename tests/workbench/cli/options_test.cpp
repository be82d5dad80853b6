#include "workbench/cli/options.h"

#include <gmock/gmock.h>

#include "workbench/cli/exit_status.h"

namespace tiepoint::workbench::cli {
namespace {

using testing::ElementsAre;

TEST(ImportRuns, PlainFilesComeFirstAndEachLayoutIsOneRun) {
  FileOptions options;
  options.layout = "nxyzw";
  options.files = {"a", "b"};
  options.xyz = {"c"};
  options.nxyzw = {"d"};
  const std::vector<LayoutFiles> runs = importRuns(options);
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_EQ(runs[0].layout, Layout::nxyzw);
  EXPECT_THAT(runs[0].paths, ElementsAre("a", "b", "d"));
  EXPECT_EQ(runs[1].layout, Layout::xyz);
  EXPECT_THAT(runs[1].paths, ElementsAre("c"));
}

TEST(ImportRuns, WithoutFilesThereIsNoRun) { EXPECT_TRUE(importRuns({}).empty()); }

TEST(ImportRuns, AnUnknownLayoutIsRefused) {
  FileOptions options;
  options.layout = "ZYX";
  EXPECT_THROW(importRuns(options), CommandError);
}

TEST(CloudOption, TheNameEndsAtTheFirstEqualsSign) {
  const CloudOption cloud = parseCloudOption("S1=a=b.xyz", "--cloud");
  EXPECT_EQ(cloud.name, "S1");
  EXPECT_EQ(cloud.file, "a=b.xyz");
}

TEST(CloudOption, BothSidesAreNeeded) {
  for (const char* text : {"S1", "=f", "S1="}) EXPECT_THROW(parseCloudOption(text, "--cloud"), CommandError) << text;
}

}  // namespace
}  // namespace tiepoint::workbench::cli
