// One registration from its first operation to its last, step by step, over a host that can be told to
// fail: for tests that let every call or every allocation of every step fail.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "session/multi_registrator.h"
#include "support/recording_host.h"
#include "support/session_builder.h"
#include "support/temporary_folder.h"

namespace tiepoint::testing {

/// What a scenario works in: a drawing of four groups and a cloud, and files to import.
class Scene {
 public:
  explicit Scene(const TemporaryFolder& folder);

  const TemporaryFolder& folder;
  RecordingHost host;
  std::unique_ptr<ZOR::reg::MultiRegistrator> session;
  Outputs out;
  std::map<ZOR::reg::RefPointId, double> discrepancies;
};

struct ScenarioStep {
  std::string name;
  std::function<void(Scene&)> run;
};

/// Construction, every operation of the interface in an order in which it has work to do, the import,
/// the end of the session, and both document events in the life of another one.
const std::vector<ScenarioStep>& scenario();

/// What a session finds that begins when nothing fails any more, in words.
std::string healthOf(RecordingHost& host);

}  // namespace tiepoint::testing
