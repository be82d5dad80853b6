#include "workbench/survey/request_checks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "workbench/report/refusal_text.h"

namespace tiepoint::workbench {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

std::string refusalOf(const RegistrationRequest& request) {
  try {
    checkRequest(request);
  } catch (const Refused& refused) {
    EXPECT_EQ(refusalClass(refused.refusal().kind), RefusalClass::usage);
    return refusalText(refused.refusal());
  }
  return "nothing";
}

TEST(CheckRequest, TakesFiniteLengthsAlone) {
  RegistrationRequest request;
  NamingRequest& naming = request.naming;
  naming.how = Naming::automatic;
  for (auto* length : {&naming.sideTolerance, &naming.minSideDifference, &naming.closeness, &naming.limit}) {
    for (const double odd : {infinity, -infinity, std::nan(""), -1.0}) {
      *length = odd;
      EXPECT_THROW(checkRequest(request), Refused) << odd;
    }
    *length = 0.5;
    EXPECT_NO_THROW(checkRequest(request));
  }
}

TEST(CheckRequest, RefusesLimitsThatGoWithAnotherNaming) {
  RegistrationRequest request;
  request.naming.how = Naming::closeness;
  request.naming.sideTolerance = 0.1;
  EXPECT_EQ(refusalOf(request), "--side-tolerance needs --match triangles or auto");
}

TEST(CheckRequest, RefusesIterationLimitsOfThePairwiseMethod) {
  RegistrationRequest request;
  request.maxIterations = 5;
  EXPECT_EQ(refusalOf(request), "--max-iterations needs --method iterative");
  request.method = RegistrationMethod::iterative;
  EXPECT_EQ(refusalOf(request), "nothing");
  request.maxIterations = 0;
  EXPECT_EQ(refusalOf(request), "--max-iterations 0: must be at least 1");
}

TEST(CheckRequest, RefusesAWeightBeyondOneFromAnyFace) {
  RegistrationRequest request;
  request.weights.push_back({{{PointRef{"S1", "T1"}}, "S1:T1"}, 1.5});
  EXPECT_EQ(refusalOf(request), "--weight S1:T1: the weight must be a number from 0 to 1");
}

TEST(CheckRequest, RefusesAFormatWithoutAFolder) {
  RegistrationRequest request;
  request.outputs.matrixFormat = MatrixFormat::trf;
  EXPECT_EQ(refusalOf(request), "--matrix-format needs --matrices FOLDER");
}

}  // namespace
}  // namespace tiepoint::workbench
