// The host's commands, and the factory by which a module adds its own.
#pragma once

#include <deque>
#include <map>
#include <string>

#include "platform/host/command_factory.h"
#include "switchboard.h"

namespace foreign {

class Commands {
 public:
  explicit Commands(Switchboard& switchboard) : board(switchboard) {}

  ICmdFactory* newFactory() { return &factories.emplace_back(board, *this); }
  std::size_t heldFactories() const;

  bool has(const std::wstring& name) const { return bodies.count(name) != 0; }
  /// The command must be there.
  void run(const std::wstring& name) const { bodies.at(name)(); }
  /// Forgets all commands: their bodies go with the module.
  void clear();

 private:
  class Factory final : public ICmdFactory, public HostObject {
   public:
    Factory(Switchboard& switchboard, Commands& all) : HostObject(switchboard, "command factory"), commands(all) {}
    void addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName, int flags,
                    HostCommandBody body) override;
    void release() override;

   private:
    Commands& commands;
  };

  Switchboard& board;
  std::map<std::wstring, HostCommandBody> bodies;
  std::deque<Factory> factories;
};

}  // namespace foreign
