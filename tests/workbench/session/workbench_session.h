// A session of the module itself over a workbench with a drawing in memory.
#pragma once

#include <memory>
#include <vector>

#include "workbench/host/workbench.h"
#include "workbench/session/driven_session.h"
#include "workbench/session/stored_groups.h"

namespace tiepoint::workbench {

/// The stations are stored in the drawing, in order, and get ids from 0 once the session reads them.
struct WorkbenchSession {
  explicit WorkbenchSession(const std::vector<StationPoints>& stations = {}) {
    workbench.openTemporaryDocument();
    store(stations);
    mirrored = std::make_unique<MirroredSession>(workbench.newSession());
    driven = std::make_unique<DrivenSession>(*mirrored);
  }

  void store(const std::vector<StationPoints>& stations) {
    workbench.inTransaction([&] {
      for (const StationPoints& station : stations) storeGroup(*drawing(), station);
    });
  }
  OdDbDatabasePtr drawing() { return workbench.requireActiveDocument().database(); }
  const SessionState& state() { return mirrored->state(); }

  Workbench workbench{Workbench::Options{"", TSL_REGISTRATION}};
  std::unique_ptr<MirroredSession> mirrored;
  std::unique_ptr<DrivenSession> driven;
};

/// Four targets of a hall, no two of whose distances are equal, as a station sees them that stands at
/// `shift` on the x axis.
inline StationPoints stationAt(const std::string& name, double shift) {
  return {name,
          {{"T1", {0.0 - shift, 0.0, 0.0}},
           {"T2", {8.0 - shift, 1.0, 0.0}},
           {"T3", {3.0 - shift, 17.0, 2.0}},
           {"T4", {12.0 - shift, 5.0, 9.0}}}};
}

/// The same without names.
inline StationPoints unnamedStationAt(const std::string& name, double shift) {
  StationPoints station = stationAt(name, shift);
  for (MeasuredPoint& point : station.points) point.name.clear();
  return station;
}

}  // namespace tiepoint::workbench
