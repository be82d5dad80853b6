// What a request over JSON-RPC asks of an adjustment; survey_methods_test has the rest.
#include "workbench/rpc/survey_requests.h"

#include <gmock/gmock.h>

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

RegistrationRequest request(const std::string& json) {
  const Json object = Json::parse(json);
  return registrationFromJson(Parameters(object));
}
AdjustmentRequest adjustment(const std::string& json) { return request(json).adjustment; }

/// The parameter that is refused, and why.
std::string complaint(const std::string& json) {
  try {
    request(json);
  } catch (const BadParameter& bad) {
    return bad.complaint();
  }
  return "nothing";
}

TEST(AdjustmentOverRpc, IsAMethod) {
  EXPECT_EQ(request(R"({"method":"adjust"})").method, RegistrationMethod::adjust);
  EXPECT_EQ(request(R"({"method":"pairwise"})").method, RegistrationMethod::pairwise);
  EXPECT_EQ(request(R"({"method":"iterative"})").method, RegistrationMethod::iterative);
}

TEST(AdjustmentOverRpc, IsAskedForNothingWithoutParameters) {
  const AdjustmentRequest none = adjustment("{}");
  EXPECT_FALSE(none.sigma);
  EXPECT_THAT(none.sigmas, IsEmpty());
  EXPECT_EQ(none.controlFile, "");
  EXPECT_FALSE(none.allLevelled);
  EXPECT_FALSE(none.variance);
  EXPECT_THAT(none.trace, IsEmpty());
}

TEST(AdjustmentOverRpc, HasSigmasForAllForGroupsAndForPoints) {
  const AdjustmentRequest asked =
      adjustment(R"({"sigma":0.5,"sigmas":[{"group":"S1","sigma":2},{"group":"S2","point":"T 1","sigma":0.25}]})");
  EXPECT_EQ(asked.sigma, 0.5);
  ASSERT_EQ(asked.sigmas.size(), 2u);
  EXPECT_EQ(asked.sigmas[0].points.readings.front().group, "S1");
  EXPECT_FALSE(asked.sigmas[0].points.readings.front().point);
  EXPECT_EQ(asked.sigmas[0].sigma, 2.0);
  EXPECT_EQ(asked.sigmas[1].points.readings.front().point, "T 1");
  EXPECT_EQ(asked.sigmas[1].points.given, "S2:T 1");
}

TEST(AdjustmentOverRpc, HasItsFiles) {
  const AdjustmentRequest asked = adjustment(R"({"sigmasFile":"a","controlFile":"b","startFile":"c","carryFile":"d"})");
  EXPECT_EQ(asked.sigmasFile, "a");
  EXPECT_EQ(asked.controlFile, "b");
  EXPECT_EQ(asked.startFile, "c");
  EXPECT_EQ(asked.carryFile, "d");
}

TEST(AdjustmentOverRpc, LevelsGroupsOrAll) {
  const AdjustmentRequest all = adjustment(R"({"level":"all"})");
  EXPECT_TRUE(all.allLevelled);
  EXPECT_THAT(all.levelled, IsEmpty());
  const AdjustmentRequest some = adjustment(R"({"level":["S1","all"]})");
  EXPECT_FALSE(some.allLevelled);
  EXPECT_THAT(some.levelled, ElementsAre("S1", "all")) << "in a list it is a group's name";
  EXPECT_EQ(complaint(R"({"level":"S1"})"), "level must be an array of groups, or \"all\"");
}

TEST(AdjustmentOverRpc, HasItsVarianceLevelAndPower) {
  const AdjustmentRequest asked = adjustment(R"({"variance":"a-posteriori","alpha":0.01,"power":0.9})");
  EXPECT_EQ(asked.variance, analysis::VarianceScale::aPosteriori);
  EXPECT_EQ(adjustment(R"({"variance":"a-priori"})").variance, analysis::VarianceScale::aPriori);
  EXPECT_EQ(asked.alpha, 0.01);
  EXPECT_EQ(asked.power, 0.9);
}

TEST(AdjustmentOverRpc, TracesPoints) {
  const AdjustmentRequest asked = adjustment(R"({"trace":[{"group":"S1","point":"T1"}]})");
  ASSERT_EQ(asked.trace.size(), 1u);
  EXPECT_EQ(asked.trace[0].readings.front().group, "S1");
  EXPECT_EQ(asked.trace[0].readings.front().point, "T1");
}

TEST(AdjustmentOverRpc, IsReadStrictly) {
  for (const char* json :
       {R"({"sigma":"S1"})", R"({"sigmas":[{"group":"S1"}]})", R"({"sigmas":[{"sigma":1}]})",
        R"({"sigmas":[{"group":"S1","sigma":1,"weight":1}]})", R"({"sigmas":{}})", R"({"sigmasFile":7})",
        R"({"controlFile":[]})", R"({"startFile":true})", R"({"carryFile":{}})", R"({"level":["S1",7]})",
        R"({"level":7})", R"({"variance":"estimated"})", R"({"alpha":"0.1"})", R"({"power":null})",
        R"({"trace":[{"group":"S1"}]})", R"({"trace":["S1:T1"]})"}) {
    EXPECT_THROW(request(json), BadParameter) << json;
  }
}

TEST(AdjustmentOverRpc, HasParametersThatAreKnown) {
  const std::vector<std::string> known = registrationParameters();
  for (const char* parameter : {"sigma", "sigmas", "sigmasFile", "controlFile", "level", "startFile", "variance",
                                "alpha", "power", "carryFile", "trace"}) {
    EXPECT_THAT(known, testing::Contains(parameter));
  }
}

}  // namespace
}  // namespace tiepoint::workbench
