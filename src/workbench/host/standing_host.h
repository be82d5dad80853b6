// The one host of this process, as the exports of the executable see it.
#pragma once

#include "platform/host/application.h"
#include "platform/host/command_factory.h"
#include "platform/host/profile.h"

namespace tiepoint::workbench {

class StandingHost {
 public:
  StandingHost(const StandingHost&) = delete;
  StandingHost& operator=(const StandingHost&) = delete;

  /// The host that stands, or null.
  static StandingHost* current();

  virtual HostApplication& application() = 0;
  virtual ICmdFactory* newCommandFactory() = 0;
  virtual HostAppService* newAppService() = 0;
  /// The module asks for the views to be drawn anew.
  virtual void refresh() = 0;

 protected:
  /// Stands from now on. Throws std::logic_error when another one does.
  StandingHost();
  /// Stands no longer.
  ~StandingHost();
};

}  // namespace tiepoint::workbench
