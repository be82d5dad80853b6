// Stations of a hall whose targets have no names.
#pragma once

#include <cmath>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "workbench/session_states.h"
#include "workbench/values/naming_limits.h"
#include "workbench/values/station_points.h"

namespace tiepoint::workbench {

/// Ten targets, in metres. No two of their distances are equal, nor nearly so.
inline const std::vector<OdGePoint3d> hall{
    {0.00, 0.00, 0.00},   {10.37, 1.21, 0.43},   {3.14, 17.82, 2.05},  {29.61, 5.33, 4.17},  {12.48, 31.09, 7.72},
    {41.95, 23.56, 1.38}, {37.24, 47.11, 11.63}, {5.87, 53.40, 19.26}, {22.73, 14.95, 9.08}, {50.02, 38.67, 6.51}};

/// A corner of a square, a point above its middle and one below: turned by a quarter it is the same.
inline const std::vector<OdGePoint3d> courtyard{{5, 5, 0}, {-5, 5, 0}, {-5, -5, 0}, {5, -5, 0}, {0, 0, 7}, {0, 0, -3}};

using Targets = std::vector<std::size_t>;
inline const Targets allTargets{0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

/// What a station sees of some targets, in a system of its own: turned by `angle` about z, and shifted.
inline StationPoints stationSeeing(const std::string& name, const std::vector<OdGePoint3d>& all, const Targets& seen,
                                   double angle) {
  StationPoints station{name, {}};
  const double c = std::cos(angle), s = std::sin(angle);
  for (const std::size_t target : seen) {
    const OdGePoint3d& p = all[target];
    station.points.push_back({"", {c * p.x - s * p.y + 100.0 * angle, s * p.x + c * p.y - 30.0, p.z + 2.0}});
  }
  return station;
}
inline StationPoints stationSeeing(const std::string& name, const Targets& seen, double angle) {
  return stationSeeing(name, hall, seen, angle);
}

/// Under the names T0, T1 and so on, the first `count` of them.
inline StationPoints named(StationPoints station, const Targets& seen, std::size_t count = 99) {
  for (std::size_t i = 0; i < seen.size() && i < count; ++i) station.points[i].name = "T" + std::to_string(seen[i]);
  return station;
}

inline StationPoints mirrored(StationPoints station) {
  for (MeasuredPoint& point : station.points) point.position.x = -point.position.x;
  return station;
}

/// Each point is off by some millimetres or so: up to `size`.
inline StationPoints noisy(StationPoints station, double size) {
  for (std::size_t i = 0; i < station.points.size(); ++i) {
    const double phase = 1.7 * static_cast<double>(i + 1);
    OdGePoint3d& p = station.points[i].position;
    p = {p.x + size * std::sin(phase), p.y + size * std::cos(2.3 * phase), p.z + size * std::sin(3.1 * phase)};
  }
  return station;
}

/// A session's state of these stations.
inline SessionState stateOf(const std::vector<StationPoints>& stations) {
  StateBuilder builder;
  for (const StationPoints& station : stations) {
    builder.group(station.name);
    for (const MeasuredPoint& point : station.points) {
      builder.point(point.name.empty() ? "?" : point.name, point.position);
    }
  }
  return builder.state;
}

/// As for data without noise, and a scanner's.
inline const NamingLimits usualLimits{0.02, 0.02, 0.1, 0.02};

}  // namespace tiepoint::workbench
