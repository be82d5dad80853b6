// Registrations made by hand, for the tests of what is told of them.
#pragma once

#include <string>
#include <utility>

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// A base with one point, and the station A, shifted by (10, -2.5, 0.125), with three: T1 is 2 mm off, T2
/// lies on its target, T3 is excluded. Metres.
inline Registration twoStations() {
  Registration registration;
  registration.usesBase = true;
  const auto addGroup = [&](const char* name, std::size_t points, std::size_t active) -> GroupOutcome& {
    GroupOutcome& group = registration.groups.emplace_back();
    group.id = registration.groups.size() - 1;
    group.name = name;
    group.points = points;
    group.active = active;
    return group;
  };
  const auto addPoint = [&](std::size_t group, const char* name, OdGePoint3d position) -> PointOutcome& {
    PointOutcome& point = registration.points.emplace_back();
    point.id = registration.points.size() - 1;
    point.group = group;
    point.name = name;
    point.position = position;
    point.active = point.named = true;
    return point;
  };
  addGroup("Base", 1, 1).inBase = true;
  GroupOutcome& a = addGroup("A", 3, 2);
  a.toCommon.emplace();
  (*a.toCommon)(0, 3) = 10.0;
  (*a.toCommon)(1, 3) = -2.5;
  (*a.toCommon)(2, 3) = 0.125;
  a.discrepancies = Rms{2, 0.0014142, 0.002, 0.001};
  a.atBase = Rms{1, 0.003, 0.003, 0.003};

  addPoint(0, "T1", {10, 0, 0});
  PointOutcome& t1 = addPoint(1, "T1", {0.25, 2.5, -0.125});
  t1.weight = 0.5;
  t1.registered = OdGePoint3d(10.25, 0, 0);
  t1.discrepancy = 0.002;
  t1.residual = OdGeVector3d(0.0012, -0.0016, 0.0);
  t1.atBase = 0.003;
  PointOutcome& t2 = addPoint(1, "T2", {5, 2.5, 0});
  t2.registered = OdGePoint3d(15, 0, 0.125);
  t2.discrepancy = 0.0;
  t2.residual = OdGeVector3d(0.0, 0.0, 0.0);
  PointOutcome& t3 = addPoint(1, "T3", {1, 2, 3});
  t3.active = false;
  t3.reason = Reason::excluded;
  t3.registered = OdGePoint3d(11, -0.5, 3.125);

  Registered registered;
  registered.discrepancies = a.discrepancies;
  registered.atBase = a.atBase;
  registered.largest = 1;
  registered.protocol = ProtocolFigures{*a.discrepancies, 1};
  registered.targets = {{"T1", {10.25, 0.0016, 0}, 0.75}};
  registration.outcome = registered;
  return registration;
}

}  // namespace tiepoint::workbench
