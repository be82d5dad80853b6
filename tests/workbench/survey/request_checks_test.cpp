#include "workbench/survey/request_checks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include "workbench/report/refusal_text.h"
#include "workbench/survey/refusal_of.h"

namespace tiepoint::workbench {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

std::string complaintOf(const RegistrationRequest& request) {
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
  EXPECT_EQ(complaintOf(request), "--side-tolerance needs --match triangles or auto");
}

TEST(CheckRequest, RefusesIterationLimitsOfTheOtherMethods) {
  RegistrationRequest request;
  request.maxIterations = 5;
  for (const RegistrationMethod method : {RegistrationMethod::adjust, RegistrationMethod::pairwise}) {
    request.method = method;
    EXPECT_EQ(complaintOf(request), "--max-iterations needs --method iterative");
  }
}

TEST(CheckRequest, RefusesNoIterations) {
  RegistrationRequest request;
  request.method = RegistrationMethod::iterative;
  request.maxIterations = 5;
  EXPECT_EQ(complaintOf(request), "nothing");
  request.maxIterations = 0;
  EXPECT_EQ(complaintOf(request), "--max-iterations 0: must be at least 1");
}

TEST(CheckRequest, RefusesAWeightBeyondOneFromAnyFace) {
  RegistrationRequest request;
  request.weights.push_back({{{PointRef{"S1", "T1"}}, "S1:T1"}, 1.5});
  EXPECT_EQ(complaintOf(request), "--weight S1:T1: the weight must be a number from 0 to 1");
}

TEST(CheckRequest, RefusesAFormatWithoutAFolder) {
  RegistrationRequest request;
  request.outputs.matrixFormat = MatrixFormat::trf;
  EXPECT_EQ(complaintOf(request), "--matrix-format needs --matrices FOLDER");
}

/// The refusal itself.
Refusal refused(const RegistrationRequest& request) {
  return refusalOf([&] { checkRequest(request); });
}

TEST(CheckRequest, ConvertsNoPointsBesideCloudsThatKeepTheirUnit) {
  RegistrationRequest request;
  request.reading.unit = LengthUnit::foot;
  EXPECT_EQ(complaintOf(request), "nothing");
  request.changes.apply = true;
  EXPECT_EQ(refused(request).kind, RefusalKind::inputUnitLeavesClouds);
  request.changes = {};
  request.changes.clouds = {{"S1", "S1.xyz"}};
  EXPECT_EQ(complaintOf(request),
            "--input-unit ft: clouds aren't converted, and would move by metres; give the points in the clouds' unit");
  request.reading.unit = LengthUnit::metre;
  EXPECT_EQ(complaintOf(request), "nothing") << "nothing is converted";
  request.unit = Unit::millimetre;
  EXPECT_EQ(refused(request).kind, RefusalKind::inputUnitGivesMetres);
}

TEST(CheckRequest, TakesAnEmptyRequest) { EXPECT_EQ(complaintOf(RegistrationRequest()), "nothing"); }

TEST(CheckRequest, TakesNoSideDifferenceButNoOtherLengthOfZero) {
  RegistrationRequest request;
  request.naming.how = Naming::automatic;
  request.naming.minSideDifference = 0.0;
  EXPECT_EQ(complaintOf(request), "nothing");
  request.naming.minSideDifference = -0.5;
  EXPECT_EQ(refused(request).kind, RefusalKind::notALength);
  EXPECT_EQ(refused(request).field, Field::minSideDifference);
  EXPECT_EQ(refused(request).value, -0.5);
  request.naming.minSideDifference.reset();
  request.naming.closeness = 0.0;
  EXPECT_EQ(refused(request).kind, RefusalKind::notAboveZero);
  EXPECT_EQ(refused(request).field, Field::closeness);
  EXPECT_EQ(refused(request).value, 0.0);
}

/// A limit and the namings that know it.
struct LimitCase {
  std::optional<double> NamingRequest::*limit;
  Field field;
  std::vector<Naming> knownTo;
};

TEST(CheckRequest, KnowsWhichLimitGoesWithWhichNaming) {
  const std::vector<LimitCase> cases{
      {&NamingRequest::sideTolerance, Field::sideTolerance, {Naming::automatic, Naming::triangles}},
      {&NamingRequest::minSideDifference, Field::minSideDifference, {Naming::automatic, Naming::triangles}},
      {&NamingRequest::closeness, Field::closeness, {Naming::automatic, Naming::closeness}},
      {&NamingRequest::limit, Field::namingLimit, {Naming::automatic}}};
  for (const LimitCase& known : cases) {
    for (const Naming how : {Naming::none, Naming::automatic, Naming::triangles, Naming::closeness}) {
      RegistrationRequest request;
      request.naming.how = how;
      request.naming.*known.limit = 0.1;
      if (std::count(known.knownTo.begin(), known.knownTo.end(), how) != 0) {
        EXPECT_EQ(complaintOf(request), "nothing");
        continue;
      }
      EXPECT_EQ(refused(request).kind, RefusalKind::goesWith);
      EXPECT_EQ(refused(request).field, known.field);
      EXPECT_EQ(refused(request).otherField, Field::naming);
    }
  }
}

TEST(CheckRequest, RefusesAConvergenceThatCantBe) {
  RegistrationRequest request;
  request.convergence = 0.1;
  EXPECT_EQ(refused(request).kind, RefusalKind::goesWith);
  EXPECT_EQ(refused(request).field, Field::convergence);
  EXPECT_EQ(refused(request).otherField, Field::method);
  request.method = RegistrationMethod::iterative;
  EXPECT_EQ(complaintOf(request), "nothing");
  for (const double odd : {0.0, -1.0, infinity, std::nan("")}) {
    request.convergence = odd;
    EXPECT_EQ(refused(request).kind, RefusalKind::notAboveZero) << odd;
    EXPECT_EQ(refused(request).field, Field::convergence) << odd;
  }
}

TEST(CheckRequest, RefusesAClusterOfTheIterativeMethod) {
  RegistrationRequest request;
  request.keepCluster = 1;
  EXPECT_EQ(complaintOf(request), "nothing");
  request.method = RegistrationMethod::iterative;
  EXPECT_EQ(refused(request).kind, RefusalKind::keepClusterNeedsPairwise);
  EXPECT_EQ(refused(request).field, Field::keepCluster);
}

TEST(CheckRequest, TakesTheWeightsFromZeroToOne) {
  RegistrationRequest request;
  request.weights.push_back({{{PointRef{"S1", "T1"}}, "S1:T1"}, 0.0});
  request.weights.push_back({{{PointRef{"S1", "T2"}}, "S1:T2"}, 1.0});
  EXPECT_EQ(complaintOf(request), "nothing");
  for (const double odd : {-0.001, 1.001, infinity, -infinity}) {
    request.weights[1].weight = odd;
    EXPECT_EQ(refused(request).kind, RefusalKind::weightOutOfRange) << odd;
    EXPECT_EQ(refused(request).given, "S1:T2") << odd;
    EXPECT_EQ(refused(request).value, odd);
  }
  request.weights[1].weight = std::nan("");
  EXPECT_EQ(refused(request).kind, RefusalKind::weightOutOfRange);
}

TEST(CheckRequest, RefusesAKindOfReportWithoutAReport) {
  RegistrationRequest request;
  request.outputs.reportKind = ReportKind::points;
  EXPECT_EQ(refused(request).field, Field::reportKind);
  EXPECT_EQ(refused(request).otherField, Field::report);
  request.outputs.report = "report.html";
  EXPECT_EQ(complaintOf(request), "nothing");
  request.outputs.matrixFormat = MatrixFormat::trf;
  EXPECT_EQ(refused(request).field, Field::matrixFormat);
  request.outputs.matrices = "matrices";
  EXPECT_EQ(complaintOf(request), "nothing");
}

/// Something asked of an adjustment, and the field that it is told of by.
struct AdjustingCase {
  std::function<void(AdjustmentRequest&)> ask;
  Field field;
};

std::vector<AdjustingCase> adjustingCases() {
  using Request = AdjustmentRequest;
  return {{[](Request& a) { a.sigma = 0.5; }, Field::sigma},
          {[](Request& a) {
             a.sigmas = {{{{PointRef{"S1"}}, "S1"}, 0.5}};
           },
           Field::sigma},
          {[](Request& a) { a.sigmasFile = "f"; }, Field::sigmasFile},
          {[](Request& a) { a.controlFile = "f"; }, Field::controlFile},
          {[](Request& a) { a.levelled = {"S1"}; }, Field::level},
          {[](Request& a) { a.allLevelled = true; }, Field::level},
          {[](Request& a) { a.startFile = "f"; }, Field::startFile},
          {[](Request& a) { a.variance = analysis::VarianceScale::aPriori; }, Field::variance},
          {[](Request& a) { a.alpha = 0.5; }, Field::alpha},
          {[](Request& a) { a.power = 0.5; }, Field::power},
          {[](Request& a) { a.carryFile = "f"; }, Field::carryFile},
          {[](Request& a) {
             a.trace = {{{PointRef{"S1", "T1"}}, "S1:T1"}};
           },
           Field::trace}};
}

TEST(CheckRequest, RefusesWhatIsAskedOfAnAdjustmentWithAnotherMethod) {
  for (const AdjustingCase& asked : adjustingCases()) {
    RegistrationRequest request;
    asked.ask(request.adjustment);
    request.method = RegistrationMethod::adjust;
    EXPECT_EQ(complaintOf(request), "nothing");
    for (const RegistrationMethod method : {RegistrationMethod::pairwise, RegistrationMethod::iterative}) {
      request.method = method;
      EXPECT_EQ(refused(request).kind, RefusalKind::goesWith);
      EXPECT_EQ(refused(request).field, asked.field);
      EXPECT_EQ(refused(request).otherField, Field::method);
    }
  }
}

TEST(CheckRequest, TakesAClusterOfAnAdjustment) {
  RegistrationRequest request;
  request.method = RegistrationMethod::adjust;
  request.keepCluster = 1;
  EXPECT_EQ(complaintOf(request), "nothing");
}

TEST(CheckRequest, TakesSigmasAboveZeroAlone) {
  RegistrationRequest request;
  request.method = RegistrationMethod::adjust;
  AdjustmentRequest& adjustment = request.adjustment;
  for (const double fine : {1e-9, 1.0, 1e9}) {
    adjustment.sigma = fine;
    adjustment.sigmas = {{{{PointRef{"S1"}}, "S1"}, fine}};
    EXPECT_EQ(complaintOf(request), "nothing") << fine;
  }
  for (const double odd : {0.0, -1.0, infinity, std::nan(""), 9e-16, 2e15}) {
    adjustment.sigma = odd;
    EXPECT_EQ(refused(request).kind, RefusalKind::notAboveZero) << odd;
    EXPECT_EQ(refused(request).field, Field::sigma) << odd;
    adjustment.sigma = 1.0;
    adjustment.sigmas = {{{{PointRef{"S1"}}, "S1"}, odd}};
    EXPECT_EQ(refused(request).kind, RefusalKind::notAboveZero) << odd;
    EXPECT_EQ(refused(request).given, "S1") << odd;
  }
}

TEST(CheckRequest, TakesALevelAndAPowerBetweenZeroAndOne) {
  RegistrationRequest request;
  request.method = RegistrationMethod::adjust;
  AdjustmentRequest& adjustment = request.adjustment;
  adjustment.alpha = 1e-9;
  adjustment.power = 0.999;
  EXPECT_EQ(complaintOf(request), "nothing");
  for (const double odd : {0.0, 1.0, -0.5, 1.5, infinity, std::nan("")}) {
    adjustment.alpha = odd;
    EXPECT_EQ(refused(request).kind, RefusalKind::notAShare) << odd;
    EXPECT_EQ(refused(request).field, Field::alpha) << odd;
    adjustment.alpha = 0.5;
    adjustment.power = odd;
    EXPECT_EQ(refused(request).kind, RefusalKind::notAShare) << odd;
    EXPECT_EQ(refused(request).field, Field::power) << odd;
    adjustment.power = 0.5;
  }
}

}  // namespace
}  // namespace tiepoint::workbench
