// Operations that aren't built yet: each says so by an exception instead of an answer that looks
// like one.
#include "platform/sdk/od_error.h"
#include "session/multi_registrator.h"

namespace ZOR::reg {

namespace {

[[noreturn]] void refuse(const char* operation) {
  throw OdError(eNotApplicable, std::string(operation) + " isn't available in this version of the module");
}

}  // namespace

bool MultiRegistrator::registerIterative(std::uint64_t, double, std::map<RefPointId, double>&) {
  refuse("registerIterative");
}

void MultiRegistrator::getMatrixFormats(std::map<std::uint64_t, std::string>&) { refuse("getMatrixFormats"); }

bool MultiRegistrator::saveGroupMatrices(GroupIdSet, std::string, std::uint64_t) { refuse("saveGroupMatrices"); }

bool MultiRegistrator::saveAllMatrices(std::string, std::uint64_t) { refuse("saveAllMatrices"); }

std::wstring MultiRegistrator::getPointsReport(RefPointIdSet) { refuse("getPointsReport"); }

std::wstring MultiRegistrator::getGroupsReport(GroupIdSet) { refuse("getGroupsReport"); }

std::wstring MultiRegistrator::getResultsReport() { refuse("getResultsReport"); }

void MultiRegistrator::getReportFormats(std::map<std::uint64_t, std::string>&) { refuse("getReportFormats"); }

bool MultiRegistrator::saveReport(std::string, std::uint64_t) { refuse("saveReport"); }

void MultiRegistrator::getMatchDistanceTolerance(double& tolerance) { tolerance = matchDistanceTolerance; }

void MultiRegistrator::getTriangleMatchTolerances(double& sideTolerance, double& minSideDifference) {
  sideTolerance = triangleSideTolerance;
  minSideDifference = triangleMinSideDifference;
}

void MultiRegistrator::matchPointsByDistance(double, std::map<RefPointId, std::string>&, GroupIdSet&, RefPointIdSet&) {
  refuse("matchPointsByDistance");
}

void MultiRegistrator::matchGroupsByTriangles(const GroupIdSet&, double, double, std::map<RefPointId, std::string>&,
                                              GroupIdSet&, RefPointIdSet&) {
  refuse("matchGroupsByTriangles");
}

void MultiRegistrator::matchAllGroupsByTriangles(double, double, std::map<RefPointId, std::string>&, GroupIdSet&,
                                                 RefPointIdSet&) {
  refuse("matchAllGroupsByTriangles");
}

double MultiRegistrator::getMaxPointSpread() { refuse("getMaxPointSpread"); }

bool MultiRegistrator::getPointSpreadHistogram(std::vector<std::uint64_t>&, std::vector<double>&) {
  refuse("getPointSpreadHistogram");
}

}  // namespace ZOR::reg
