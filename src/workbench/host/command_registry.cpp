#include "workbench/host/command_registry.h"

#include <algorithm>

namespace tiepoint::workbench {

namespace {

class Factory final : public ICmdFactory {
 public:
  explicit Factory(CommandRegistry& registry_) : registry(registry_) {}

  void addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName, int flags,
                  HostCommandBody body) override {
    registry.add({group, globalName, localName, flags, body});
  }
  void release() override { delete this; }

 private:
  CommandRegistry& registry;
};

}  // namespace

ICmdFactory* CommandRegistry::newFactory() { return new Factory(*this); }

const RegisteredCommand* CommandRegistry::find(const std::wstring& globalName) const {
  const auto found = std::find_if(registered.begin(), registered.end(),
                                  [&](const RegisteredCommand& each) { return each.globalName == globalName; });
  return found == registered.end() ? nullptr : &*found;
}

}  // namespace tiepoint::workbench
