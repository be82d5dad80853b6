// The application object of the host.
#pragma once

#include <vector>

#include "platform/host/application.h"
#include "switchboard.h"

namespace foreign {

class Host;

class Application final : public HostApplication, public HostObject {
 public:
  Application(Switchboard& switchboard, Host& wholeHost) : HostObject(switchboard, "application"), host(wholeHost) {}

  HostDocument* activeDocument() override;
  void addReactor(HostApDocManagerReactor* reactor) override;
  void removeReactor(HostApDocManagerReactor* reactor) override;
  HostMessageLine* messageLine() override;
  HostFileDialog* fileDialog() override;

 private:
  Host& host;
};

}  // namespace foreign
