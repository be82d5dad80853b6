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
