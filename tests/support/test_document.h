// A document of a host made for tests: a real drawing in memory and real views.
#pragma once

#include <string>
#include <vector>

#include "platform/host/document.h"
#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/pointclouds/points_repository.h"
#include "workbench/view/transient_service.h"

namespace tiepoint::testing {

/// One target of a station as a test writes it down.
struct Target {
  std::string name;
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double weight = 1.0;
};

class TestDocument : public HostDocument {
 public:
  TestDocument();

  OdDbDatabasePtr database() override { return drawing; }
  HostTransientService* transientService() override { return &transients; }
  bool isReady() const override { return true; }

  /// Stores a station as the import does; replaces nothing.
  void storeGroup(const std::string& name, const std::vector<Target>& targets);
  /// Names and targets of a stored station; empty when there is none.
  std::vector<Target> storedGroup(const std::string& name) const;
  void addCloud(const std::string& name);
  OdGeMatrix3d cloudMatrix(const std::string& name) const;

  workbench::View& view() { return transients.view(); }
  workbench::TransientService& transientViews() { return transients; }
  const std::vector<workbench::TransientEntry>& drawables() const { return transients.drawables(); }

 private:
  OdDbDatabasePtr drawing;
  workbench::TransientService transients;
};

}  // namespace tiepoint::testing
