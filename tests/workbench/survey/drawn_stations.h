// A workbench with stations in its drawing, and a session of them.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "workbench/host/workbench.h"
#include "workbench/session/driven_session.h"
#include "workbench/session/stored_groups.h"
#include "workbench/survey/point_choice.h"
#include "workbench/values/progress.h"

namespace tiepoint::workbench {

/// Up to five targets of a hall without symmetry, by these names and moved by `east` along x.
inline StationPoints hallFrom(const std::string& station, double east, const std::vector<std::string>& names) {
  const std::vector<OdGePoint3d> targets{{0, 0, 0}, {8, 0, 0}, {0, 6, 0}, {0, 0, 4}, {3, 2, 1}};
  StationPoints seen{station, {}};
  for (std::size_t i = 0; i < names.size(); ++i) {
    OdGePoint3d position = targets.at(i);
    position.x += east;
    seen.points.push_back({names[i], position});
  }
  return seen;
}

inline PointChoice choiceOf(const std::string& group) { return {{PointRef{group}}, group}; }
inline PointChoice choiceOf(const std::string& group, const std::string& point) {
  return {{PointRef{group, point}}, group + ":" + point};
}

/// Remembers what it is told; `cancelAt` ends the work at that step, counted from 0 over all stages.
class ToldProgress : public Progress {
 public:
  static constexpr std::size_t never = static_cast<std::size_t>(-1);

  explicit ToldProgress(std::size_t cancelAt_ = never) : cancelAt(cancelAt_) {}
  void begin(Stage stage) override {
    stages.push_back(stage);
    ++open;
  }
  void advance(std::uint64_t done, std::uint64_t total) override { steps.emplace_back(done, total); }
  void end() override { --open; }
  bool isCancelled() const override { return steps.size() >= cancelAt; }

  std::vector<Stage> stages;
  std::vector<std::pair<std::uint64_t, std::uint64_t>> steps;
  int open = 0;

 private:
  std::size_t cancelAt;
};

/// The workbench's active drawing is in memory and empty at first.
class DrawnStations : public testing::Test {
 protected:
  DrawnStations() { workbench.openTemporaryDocument(); }

  void store(const std::vector<StationPoints>& stations) {
    const OdDbDatabasePtr database = workbench.requireActiveDocument().database();
    workbench.inTransaction([&] {
      for (const StationPoints& station : stations) ASSERT_TRUE(storeGroup(*database, station));
    });
  }

  /// A session with all groups of the drawing; it ends the one before.
  DrivenSession& begin() {
    driven.reset();
    mirrored.reset();
    mirrored = std::make_unique<MirroredSession>(workbench.newSession());
    driven = std::make_unique<DrivenSession>(*mirrored);
    driven->addAllGroups();
    return *driven;
  }

  Workbench workbench{Workbench::Options{"", TSL_REGISTRATION}};

 private:
  std::unique_ptr<MirroredSession> mirrored;
  std::unique_ptr<DrivenSession> driven;
};

/// The names of a session's points in use, as "group:point" in its order.
inline std::vector<std::string> pointsInUse(const SessionState& state) {
  std::vector<std::string> names;
  for (const SessionPoint& point : state.points) {
    if (point.record.active) names.push_back(state.group(point.record.groupId).name + ":" + point.name);
  }
  return names;
}

}  // namespace tiepoint::workbench
