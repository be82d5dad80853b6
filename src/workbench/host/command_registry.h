// The commands that modules have registered.
#pragma once

#include <string>
#include <vector>

#include "platform/host/command_factory.h"

namespace tiepoint::workbench {

/// A command that a module has registered.
struct RegisteredCommand {
  std::wstring group;
  std::wstring globalName;
  std::wstring localName;
  int flags = 0;
  HostCommandBody body = nullptr;
};

class CommandRegistry {
 public:
  /// A factory that adds to this registry, which must outlive it; who gets it releases it.
  ICmdFactory* newFactory();

  void add(RegisteredCommand command) { registered.push_back(std::move(command)); }
  /// In the order of registration.
  const std::vector<RegisteredCommand>& commands() const { return registered; }
  /// The first command of that global name, or null.
  const RegisteredCommand* find(const std::wstring& globalName) const;

 private:
  std::vector<RegisteredCommand> registered;
};

}  // namespace tiepoint::workbench
