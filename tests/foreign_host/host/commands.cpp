#include "commands.h"

#include <algorithm>

namespace foreign {

void Commands::Factory::addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName, int flags,
                                   HostCommandBody body) {
  answer("Factory::addCommand", [&] {
    const std::wstring name = globalName;
    if (std::wstring(group) != L"CLOUD_REGISTRATION" || name != localName || flags != 4 || !body) {
      board.complain("a command with other names or flags, or without a body");
    }
    commands.bodies[name] = body;
  });
}

void Commands::Factory::release() {
  letGo("Factory::release", [this] { end(); });
}

std::size_t Commands::heldFactories() const {
  return static_cast<std::size_t>(
      std::count_if(factories.begin(), factories.end(), [](const Factory& factory) { return !factory.isOver(); }));
}

void Commands::clear() {
  bodies.clear();
  factories.clear();
}

}  // namespace foreign
