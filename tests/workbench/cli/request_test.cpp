#include "workbench/cli/request.h"

#include <gmock/gmock.h>

#include <functional>

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
            "--method foo: unknown; choose adjust, pairwise or iterative");
  EXPECT_EQ(refusalOf([](RegisterOptions& o) { o.matrixFormat = "foo"; }),
            "--matrix-format foo: unknown; choose plain, 4x4 or trf");
  EXPECT_EQ(refusalOf([](RegisterOptions& o) { o.reportKind = "foo"; }),
            "--report-kind foo: unknown; choose results, points or groups");
  EXPECT_EQ(refusalOf([](RegisterOptions& o) { o.unit = "ft"; }), "--unit ft: unknown; choose m or mm");
}

/// What is asked of an adjustment by these options.
AdjustmentRequest adjustment(const std::function<void(AdjustOptions&)>& set) {
  RegisterOptions options;
  options.method = "adjust";
  set(options.adjust);
  return requestOf(options).adjustment;
}

TEST(AdjustmentRequests, AreEmptyWhereNothingIsSaid) {
  const AdjustmentRequest empty = adjustment([](AdjustOptions&) {});
  EXPECT_FALSE(empty.sigma);
  EXPECT_TRUE(empty.sigmas.empty());
  EXPECT_FALSE(empty.allLevelled);
  EXPECT_FALSE(empty.variance);
  EXPECT_FALSE(empty.alpha);
  EXPECT_TRUE(empty.trace.empty());
}

TEST(AdjustmentRequests, HaveASigmaForAllAndForGroups) {
  const AdjustmentRequest sigmas = adjustment([](AdjustOptions& o) { o.sigma = {"0.5", "S1=1e-3", "a=b:c=+2"}; });
  EXPECT_EQ(sigmas.sigma, 0.5);
  ASSERT_EQ(sigmas.sigmas.size(), 2u);
  EXPECT_EQ(sigmas.sigmas[0].sigma, 0.001);
  EXPECT_EQ(sigmas.sigmas[1].sigma, 2.0);
  EXPECT_EQ(sigmas.sigmas[1].points.given, "a=b:c");
  ASSERT_EQ(sigmas.sigmas[1].points.readings.size(), 1u);
  EXPECT_EQ(sigmas.sigmas[1].points.readings[0].group, "a=b:c");
  EXPECT_FALSE(sigmas.sigmas[1].points.readings[0].point);
}

TEST(AdjustmentRequests, HaveNumbersForSigmas) {
  const auto refused = [](const std::vector<std::string>& sigma) {
    return refusal([&] { adjustment([&](AdjustOptions& o) { o.sigma = sigma; }); });
  };
  for (const char* text : {"S1", "S1=", "S1=x", "S1=nan", "", "1mm", "0,5", "inf"}) {
    EXPECT_EQ(refused({text}), std::string("--sigma ") + text + ": not a number");
  }
  EXPECT_EQ(refused({"=0.5"}), "--sigma =0.5: must have the form S or GROUP=S");
  EXPECT_EQ(refused({"0.5", "0.7"}), "--sigma 0.7: there is a sigma for all already; leave one out");
}

TEST(AdjustmentRequests, LevelGroupsOrAll) {
  const AdjustmentRequest some = adjustment([](AdjustOptions& o) { o.level = {"S1", "S 2"}; });
  EXPECT_THAT(some.levelled, ElementsAre("S1", "S 2"));
  EXPECT_FALSE(some.allLevelled);
  const AdjustmentRequest all = adjustment([](AdjustOptions& o) { o.level = {"all"}; });
  EXPECT_TRUE(all.allLevelled);
  EXPECT_TRUE(all.levelled.empty());
}

TEST(AdjustmentRequests, TracePointsAlone) {
  const AdjustmentRequest traced = adjustment([](AdjustOptions& o) { o.trace = {"S1:T1", "A:B:C"}; });
  ASSERT_EQ(traced.trace.size(), 2u);
  EXPECT_EQ(traced.trace[1].given, "A:B:C");
  ASSERT_EQ(traced.trace[1].readings.size(), 2u);
  EXPECT_EQ(traced.trace[1].readings[0].group, "A");
  EXPECT_EQ(traced.trace[1].readings[0].point, "B:C");
  EXPECT_EQ(traced.trace[1].readings[1].group, "A:B");
  EXPECT_EQ(refusal([] { adjustment([](AdjustOptions& o) { o.trace = {"S1"}; }); }),
            "--trace S1: must have the form GROUP:POINT");
}

TEST(AdjustmentRequests, ChooseTheirVariance) {
  const auto variance = [](const char* name) {
    return adjustment([&](AdjustOptions& o) { o.variance = name; }).variance;
  };
  EXPECT_EQ(variance("a-priori"), analysis::VarianceScale::aPriori);
  EXPECT_EQ(variance("a-posteriori"), analysis::VarianceScale::aPosteriori);
  EXPECT_EQ(refusal([&] { variance("foo"); }), "--variance foo: unknown; choose a-priori or a-posteriori");
}

TEST(AdjustmentRequests, HaveWhatElseIsSaid) {
  const AdjustmentRequest all = adjustment([](AdjustOptions& o) {
    o.sigmasFile = "sigmas";
    o.controlFile = "control";
    o.startFile = "start";
    o.carryFile = "carry";
    o.alpha = 0.01;
    o.power = 0.9;
  });
  EXPECT_EQ(all.sigmasFile, "sigmas");
  EXPECT_EQ(all.controlFile, "control");
  EXPECT_EQ(all.startFile, "start");
  EXPECT_EQ(all.carryFile, "carry");
  EXPECT_EQ(all.alpha, 0.01);
  EXPECT_EQ(all.power, 0.9);
}

TEST(Requests, ChooseTheirMethod) {
  const auto method = [](const char* name) {
    RegisterOptions options;
    options.method = name;
    return requestOf(options).method;
  };
  EXPECT_EQ(method("adjust"), RegistrationMethod::adjust);
  EXPECT_EQ(method("pairwise"), RegistrationMethod::pairwise);
  EXPECT_EQ(method("iterative"), RegistrationMethod::iterative);
}

}  // namespace
}  // namespace tiepoint::workbench::cli
