// The operations that leave the session's points, names and results as they are.
#include <limits>

#include "workbench/session/mirrored_session.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// No cloud has this number: a list's numbers count from 0.
constexpr std::uint64_t notListed = std::numeric_limits<std::uint64_t>::max();

}  // namespace

bool MirroredSession::getCommonPointNames(std::list<NamedId>& names) { return session->getCommonPointNames(names); }

bool MirroredSession::hasUnnamedPointsInRegisteredGroups() { return session->hasUnnamedPointsInRegisteredGroups(); }

bool MirroredSession::hasUnnamedPoints() { return session->hasUnnamedPoints(); }

void MirroredSession::zoomToGroup(GroupId group) { session->zoomToGroup(group); }

void MirroredSession::zoomToPoint(RefPointId point) { session->zoomToPoint(point); }

void MirroredSession::zoomToAll() { session->zoomToAll(); }

void MirroredSession::getGroupClusters(std::map<std::uint64_t, GroupIdSet>& clusters) {
  session->getGroupClusters(clusters);
}

void MirroredSession::getIterationLimits(std::uint64_t& maxIterations, double& convergenceCriteria) {
  session->getIterationLimits(maxIterations, convergenceCriteria);
}

void MirroredSession::getMatchDistanceTolerance(double& tolerance) { session->getMatchDistanceTolerance(tolerance); }

void MirroredSession::getTriangleMatchTolerances(double& sideTolerance, double& minSideDifference) {
  session->getTriangleMatchTolerances(sideTolerance, minSideDifference);
}

double MirroredSession::getMaxPointSpread() { return session->getMaxPointSpread(); }

bool MirroredSession::getPointSpreadHistogram(std::vector<std::uint64_t>& binCounts, std::vector<double>& binEdges) {
  return session->getPointSpreadHistogram(binCounts, binEdges);
}

bool MirroredSession::saveCommonPointsFile(std::string name, std::string folder) {
  return session->saveCommonPointsFile(std::move(name), std::move(folder));
}

bool MirroredSession::storeCommonPoints(std::string name) { return session->storeCommonPoints(std::move(name)); }

bool MirroredSession::applyTransformToCloud(GroupId group, std::uint64_t cloud) {
  return session->applyTransformToCloud(group, cloud);
}

bool MirroredSession::applyTransformations() { return session->applyTransformations(); }

void MirroredSession::getPointClouds(std::list<NamedId>& clouds) {
  // The former list is gone whatever comes. A drawing without clouds leaves the output as it was.
  mirror.setClouds({});
  std::list<NamedId> listed{{notListed, {}}};
  session->getPointClouds(listed);
  if (listed.size() == 1 && listed.front().id == notListed) return;
  mirror.setClouds(listed);
  clouds = std::move(listed);
}

void MirroredSession::getMatrixFormats(std::map<std::uint64_t, std::string>& formats) {
  session->getMatrixFormats(formats);
}

bool MirroredSession::saveGroupMatrices(GroupIdSet groups, std::string folder, std::uint64_t format) {
  return session->saveGroupMatrices(std::move(groups), std::move(folder), format);
}

bool MirroredSession::saveAllMatrices(std::string folder, std::uint64_t format) {
  return session->saveAllMatrices(std::move(folder), format);
}

std::wstring MirroredSession::getPointsReport(RefPointIdSet points) {
  std::wstring report = session->getPointsReport(std::move(points));
  mirror.setLastReport(LastReport::points);
  return report;
}

std::wstring MirroredSession::getGroupsReport(GroupIdSet groups) {
  std::wstring report = session->getGroupsReport(std::move(groups));
  mirror.setLastReport(LastReport::groups);
  return report;
}

std::wstring MirroredSession::getResultsReport() {
  std::wstring report = session->getResultsReport();
  mirror.setLastReport(LastReport::results);
  return report;
}

void MirroredSession::getReportFormats(std::map<std::uint64_t, std::string>& formats) {
  session->getReportFormats(formats);
}

bool MirroredSession::saveReport(std::string path, std::uint64_t format) {
  return session->saveReport(std::move(path), format);
}

}  // namespace tiepoint::workbench
