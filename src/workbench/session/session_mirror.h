// What a session's answers make of its state.
#pragma once

#include <list>
#include <map>
#include <optional>
#include <string>

#include "workbench/session/assigned_ids.h"
#include "workbench/session/point_index.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// Follows a session by what its operations were asked and what they answered. Where an answer
/// doesn't tell what changed, the rule of the operation does. Ids that the session doesn't hold change
/// nothing, as in the session.
///
/// Names come as the session has them, windows-1251.
class SessionMirror {
 public:
  const SessionState& state() const { return current; }
  bool hasPoint(ZOR::reg::RefPointId id) const { return index.indexOf(id) != PointIndex::none; }

  // --- Membership.

  /// Groups that the session knows. True when one of them is new.
  bool addGroupNames(const std::map<ZOR::reg::GroupId, std::string>& groups);
  void addPoints(const std::list<ZOR::reg::RefPoint>& added);
  void removePoints(const ZOR::reg::RefPointIdSet& removed);
  void show(const ZOR::reg::GroupIdSet& groups);
  void hide(const ZOR::reg::GroupIdSet& groups);

  // --- Switches.

  void setInactive(const ZOR::reg::RefPointIdSet& inactivePoints);
  void setExcluded(const ZOR::reg::RefPointIdSet& excludedPoints);
  void setBase(const ZOR::reg::GroupIdSet& baseGroups, const ZOR::reg::RefPointIdSet& basePoints);
  void switchPoints(const ZOR::reg::RefPointIdSet& points, bool included);
  void setWeight(const ZOR::reg::RefPointIdSet& points, double weight);

  // --- Names.

  /// The whole list. Points whose id had no name may have one now.
  void setNames(const std::list<ZOR::reg::NamedId>& names);
  void renameGroup(ZOR::reg::GroupId group, const std::string& newName);
  /// Of a point that the session holds: what it is called now, and what becomes of its old name.
  void renamePoint(ZOR::reg::RefPointId point, const std::string& newName);
  /// What a matching has named; `names` is the list after it, which is the list before it and what
  /// the matching has added.
  void assignNames(const std::map<ZOR::reg::RefPointId, std::string>& assigned,
                   const std::list<ZOR::reg::NamedId>& names);

  // --- Results.

  /// Every group that takes part has a transformation then, but for the base.
  void setRegistered(const ZOR::reg::PointDiscrepancies& discrepancies);
  /// A solve that found nothing to do leaves the transformations as they are.
  void setRegisteredIteratively(const ZOR::reg::PointDiscrepancies& discrepancies);
  void setRefused(const ZOR::reg::PointDiscrepancies& discrepancies) { current.discrepancies = discrepancies; }
  void clearResults();

  // --- What is kept as it is passed.

  void setClusters(const ZOR::reg::GroupClusters& clusters) { current.clusters = clusters; }
  void setIterationLimits(std::uint64_t maxIterations, double convergenceCriteria);
  void setTolerances(double distance, double triangleSide, double triangleMinSideDifference);
  void setClouds(const std::list<ZOR::reg::NamedId>& clouds);
  void setLastReport(LastReport report) { current.lastReport = report; }

 private:
  SessionPoint* find(ZOR::reg::RefPointId id);
  SessionGroup& groupOf(ZOR::reg::GroupId id);
  void countGroups();
  void showName(SessionPoint& point);
  void nameUnnamed();
  void assignName(SessionPoint& point, const std::string& name, const std::optional<AssignedId>& assigned,
                  const ZOR::reg::CommonPointIdSet& automatic);
  ZOR::reg::GroupIdSet movingGroups() const;
  bool hasActiveBase() const;

  SessionState current;
  PointIndex index;
  ToldIds inactive;
  ToldIds excluded;
  ToldIds base;
  /// There may be points whose id has no name: they were read under one that the session has dropped.
  bool mayHoldNameless = false;
};

}  // namespace tiepoint::workbench
