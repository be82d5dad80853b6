// A host inside a test program: real databases, cameras and profile, found by the real look-ups.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/host/application.h"
#include "platform/host/document.h"
#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/pointclouds/points_repository.h"
#include "workbench/profile/profile.h"
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
  OdDbDatabasePtr drawing = OdDbDatabasePtr(new OdDbDatabase);
  workbench::TransientService transients;
};

/// While it stands, the exports of the test program answer with it.
class SessionHost : public HostApplication {
 public:
  /// With one open document.
  SessionHost();
  ~SessionHost() override;

  TestDocument& document() { return *documents.back(); }
  /// Opens a further document, which becomes active; the reactors are told.
  TestDocument& openDocument();
  /// Closes the active document; the one before it becomes active.
  void closeDocument();

  workbench::Profile& profile() { return values; }
  std::uint64_t redraws = 0;
  const std::vector<HostApDocManagerReactor*>& reactors() const { return listeners; }

  HostDocument* activeDocument() override;
  void addReactor(HostApDocManagerReactor* reactor) override;
  void removeReactor(HostApDocManagerReactor* reactor) override;
  HostMessageLine* messageLine() override { return nullptr; }
  HostFileDialog* fileDialog() override { return nullptr; }

 private:
  std::vector<std::unique_ptr<TestDocument>> documents;
  std::vector<HostApDocManagerReactor*> listeners;
  workbench::Profile values;
};

}  // namespace tiepoint::testing
