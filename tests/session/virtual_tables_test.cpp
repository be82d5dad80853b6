// The order of the operations of a session. A host's dialog is built apart from the module: what it
// calls is the place, not the name.
#include "support/virtual_table.h"

#ifndef _MSC_VER

#include <gtest/gtest.h>

#include "session/i_multi_registrator.h"
#include "session/multi_registrator.h"

namespace {

using namespace tiepoint::testing;
using ZOR::reg::iMultiRegistrator;
using ZOR::reg::MultiRegistrator;

/// The operations behind the destructor, in the order in which a dialog finds them.
template <class Class>
std::vector<std::size_t> placesOfOperations() {
  return placesOf(
      &Class::getAvailableGroups, &Class::addGroups, &Class::removeGroups, &Class::removePoints, &Class::setBaseGroups,
      &Class::unsetBaseGroups, &Class::includePoints, &Class::excludePoints, &Class::setPointsWeight,
      &Class::includeGroups, &Class::excludeGroups, &Class::renameGroup, &Class::renamePoint, &Class::setGroupsVisible,
      &Class::zoomToGroup, &Class::zoomToPoint, &Class::zoomToAll, &Class::saveCommonPointsFile,
      &Class::storeCommonPoints, &Class::clearResults, &Class::registerPairwise, &Class::getGroupClusters,
      &Class::keepGroupCluster, &Class::getIterationLimits, &Class::registerIterative, &Class::getCommonPointNames,
      &Class::applyTransformToCloud, &Class::applyTransformations, &Class::getPointClouds, &Class::getMatrixFormats,
      &Class::saveGroupMatrices, &Class::saveAllMatrices, &Class::getPointsReport, &Class::getGroupsReport,
      &Class::getResultsReport, &Class::getReportFormats, &Class::saveReport,
      &Class::hasUnnamedPointsInRegisteredGroups, &Class::hasUnnamedPoints, &Class::getMatchDistanceTolerance,
      &Class::getTriangleMatchTolerances, &Class::matchPointsByDistance, &Class::matchGroupsByTriangles,
      &Class::matchAllGroupsByTriangles, &Class::getMaxPointSpread, &Class::getPointSpreadHistogram);
}

TEST(VirtualTables, TheInterfaceOfASessionHasItsDestructorThenItsFortySixOperations) {
  EXPECT_TRUE(std::has_virtual_destructor_v<iMultiRegistrator>);
  EXPECT_EQ(placesOfOperations<iMultiRegistrator>(), inTurn(behindDestructor, 46));
}

TEST(VirtualTables, ASessionHasItsOperationsWhereItsInterfaceHasThem) {
  EXPECT_EQ(placesOfOperations<MultiRegistrator>(), inTurn(behindDestructor, 46));
}

}  // namespace

#endif
