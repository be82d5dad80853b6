#include "workbench/cli/request.h"

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

TEST(CloudRequests, TheNameEndsAtTheFirstEqualsSign) {
  const std::vector<CloudRequest> clouds = cloudRequests({"S1=a=b.xyz"}, "--cloud");
  ASSERT_EQ(clouds.size(), 1u);
  EXPECT_EQ(clouds[0].name, "S1");
  EXPECT_EQ(clouds[0].path, "a=b.xyz");
}

TEST(CloudRequests, BothSidesAreNeeded) {
  for (const char* text : {"S1", "=f", "S1="}) EXPECT_THROW(cloudRequests({text}, "--cloud"), CommandError) << text;
}

std::vector<std::string> readingsOf(const std::string& text) {
  std::vector<std::string> readings;
  for (const PointRef& ref : pointChoice(text).readings) readings.push_back(ref.group + "|" + ref.point.value_or(""));
  return readings;
}

TEST(PointChoices, ATextWithColonsCanBeReadAtEachOfThem) {
  EXPECT_THAT(readingsOf("S1"), ElementsAre("S1|"));
  EXPECT_THAT(readingsOf("S2:a:b"), ElementsAre("S2:a:b|", "S2|a:b", "S2:a|b"));
}

template <class Action>
std::string refusal(Action action) {
  try {
    action();
  } catch (const CommandError& error) {
    EXPECT_EQ(error.status(), ExitStatus::usage);
    return error.what();
  }
  return "nothing";
}

TEST(WeightChoices, AWeightStandsBehindTheLastEqualsSign) {
  const WeightChoice choice = weightChoice("S1:T=1=0.25");
  EXPECT_EQ(choice.points.given, "S1:T=1");
  EXPECT_EQ(choice.weight, 0.25);
}

TEST(WeightChoices, WeightsAreNumbersFromZeroToOne) {
  EXPECT_EQ(weightChoice("S1:T1=0").weight, 0.0);
  EXPECT_EQ(weightChoice("S1:T1=1").weight, 1.0);
  for (const char* text : {"S1:T1=1.5", "S1:T1=-0.1", "S1:T1=nan", "S1:T1=", "S1:T1=1x"}) {
    EXPECT_EQ(refusal([&] { weightChoice(text); }),
              std::string("--weight ") + text + ": the weight must be a number from 0 to 1");
  }
  EXPECT_EQ(refusal([] { weightChoice("S1:T1"); }), "--weight S1:T1: must have the form GROUP:POINT=WEIGHT");
}

TEST(Requests, WordsThatThereArentAreRefusedBeforeAnythingIsRead) {
  const auto refusalOf = [](auto set) {
    RegisterOptions options;
    set(options);
    return refusal([&] { requestOf(options); });
  };
  EXPECT_EQ(refusalOf([](RegisterOptions& o) { o.match = "foo"; }),
            "--match foo: unknown; choose auto, triangles or distance");
  EXPECT_EQ(refusalOf([](RegisterOptions& o) { o.method = "foo"; }),
            "--method foo: unknown; choose pairwise or iterative");
  EXPECT_EQ(refusalOf([](RegisterOptions& o) { o.matrixFormat = "foo"; }),
            "--matrix-format foo: unknown; choose plain, 4x4 or trf");
  EXPECT_EQ(refusalOf([](RegisterOptions& o) { o.reportKind = "foo"; }),
            "--report-kind foo: unknown; choose results, points or groups");
  EXPECT_EQ(refusalOf([](RegisterOptions& o) { o.unit = "ft"; }), "--unit ft: unknown; choose m or mm");
}

}  // namespace
}  // namespace tiepoint::workbench::cli
