// A host inside a test program: real databases, cameras and profile, found by the real look-ups.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/host/application.h"
#include "support/test_document.h"
#include "workbench/profile/profile.h"

namespace tiepoint::testing {

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
