#include "application.h"

#include <algorithm>

#include "host.h"

namespace foreign {

HostDocument* Application::activeDocument() {
  return answer("Application::activeDocument", [this]() -> HostDocument* { return host.activeDocument(); });
}

void Application::addReactor(HostApDocManagerReactor* reactor) {
  answer("Application::addReactor", [&] {
    if (std::count(host.reactors.begin(), host.reactors.end(), reactor) != 0) {
      board.complain("a reactor was added twice");
    }
    host.reactors.push_back(reactor);
  });
}

void Application::removeReactor(HostApDocManagerReactor* reactor) {
  letGo("Application::removeReactor", [&] {
    host.reactors.erase(std::remove(host.reactors.begin(), host.reactors.end(), reactor), host.reactors.end());
  });
}

HostMessageLine* Application::messageLine() {
  return answer("Application::messageLine", [this]() -> HostMessageLine* { return &host.messageLine; });
}

HostFileDialog* Application::fileDialog() {
  return answer("Application::fileDialog", [this]() -> HostFileDialog* { return &host.dialog; });
}

}  // namespace foreign
