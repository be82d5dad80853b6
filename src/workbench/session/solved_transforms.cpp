#include "workbench/session/solved_transforms.h"

#include "workbench/clouds/drawing_clouds.h"
#include "workbench/io/stand_in_names.h"
#include "workbench/io/text_encoding.h"
#include "workbench/session/scratch_document.h"
#include "workbench/session/stored_groups.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

constexpr const char* targetsName = "targets";

/// One unmoved cloud; its matrix takes up every transformation that is applied to it.
void addProbe(OdDbDatabase& database, std::size_t number) { addCloud(database, std::to_wstring(number), L""); }

std::vector<MergedTarget> storedTargets(const OdDbDatabase& database) {
  std::vector<MergedTarget> targets;
  for (const StoredGroup& group : storedGroups(database)) {
    for (const ZOR::_StoredPoint& point : group.points()) {
      const std::string inModule = utf8FromWide(point.name.wideText());
      targets.push_back({nameOfStandIn(inModule), {point.x, point.y, point.z}, point.w, inModule});
    }
  }
  return targets;
}

SolvedTransforms readBack(Workbench& workbench, iMultiRegistrator& session, const std::vector<GroupId>& groups,
                          bool withTargets) {
  const ScratchDocument scratch(workbench);
  std::vector<bool> moved(groups.size(), false);
  std::list<NamedId> clouds;
  workbench.inTransaction([&] {
    for (std::size_t i = 0; i < groups.size(); ++i) addProbe(*scratch.database(), i);
    session.getPointClouds(clouds);
    for (std::size_t i = 0; i < groups.size(); ++i) moved[i] = session.applyTransformToCloud(groups[i], i);
    if (withTargets) session.storeCommonPoints(targetsName);
  });

  SolvedTransforms solved;
  const std::vector<DrawingCloud> probes = cloudsOf(*scratch.database());
  for (std::size_t i = 0; i < groups.size(); ++i) {
    if (moved[i]) solved.toCommon.emplace(groups[i], probes[i].matrix);
  }
  solved.targets = storedTargets(*scratch.database());
  // The session lets go of the probes before their drawing goes.
  scratch.reactivateFormer();
  session.getPointClouds(clouds);
  return solved;
}

}  // namespace

std::map<GroupId, OdGeMatrix3d> solvedMotions(Workbench& workbench, iMultiRegistrator& session,
                                              const std::vector<GroupId>& groups) {
  return readBack(workbench, session, groups, false).toCommon;
}

std::vector<MergedTarget> solvedTargets(Workbench& workbench, iMultiRegistrator& session) {
  return readBack(workbench, session, {}, true).targets;
}

SolvedTransforms solvedTransforms(Workbench& workbench, iMultiRegistrator& session,
                                  const std::vector<GroupId>& groups) {
  SolvedTransforms solved = readBack(workbench, session, groups, true);
  solved.fitted = solved.targets;
  solved.spread = pointSpreadOf(session);
  return solved;
}

}  // namespace tiepoint::workbench
