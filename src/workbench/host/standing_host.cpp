#include "workbench/host/standing_host.h"

#include <stdexcept>

namespace tiepoint::workbench {

namespace {

StandingHost* standing = nullptr;

}  // namespace

StandingHost* StandingHost::current() { return standing; }

StandingHost::StandingHost() {
  if (standing) throw std::logic_error("there is already a workbench in this process");
  standing = this;
}

StandingHost::~StandingHost() { standing = nullptr; }

}  // namespace tiepoint::workbench
