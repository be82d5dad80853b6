#include "host.h"

#include <algorithm>
#include <exception>

namespace foreign {

Host& Host::instance() {
  static Host host;
  return host;
}

Document& Host::openDocument() {
  Document& document = documents.emplace_back(switchboard, graphics);
  open.push_back(&document);
  const std::vector<HostApDocManagerReactor*> told = reactors;
  for (HostApDocManagerReactor* reactor : told) reactor->documentAdded(&document);
  return document;
}

void Host::closeDocument(Document& document) {
  std::exception_ptr failure;
  const std::vector<HostApDocManagerReactor*> told = reactors;
  for (HostApDocManagerReactor* reactor : told) {
    try {
      reactor->documentToBeRemoved(&document);
    } catch (...) {
      failure = std::current_exception();
    }
  }
  // With others open, the module's drawable may be shown in another one too.
  if (open.size() == 1 && document.service().size() != 0) {
    switchboard.complain("a drawable was left in the last document as it was closed");
  }
  document.close();
  open.erase(std::remove(open.begin(), open.end(), &document), open.end());
  application().end();
  applications.emplace_back(switchboard, *this);
  if (failure) std::rethrow_exception(failure);
}

void Host::refresh(unsigned char argument) {
  switchboard.answer("refresh", [&] {
    if (argument != 0) switchboard.complain("a refresh with another argument than 0");
    if (!graphics.drawsAtOnce) return;
    for (Document* document : open) document->service().draw();
  });
}

std::vector<std::string> Host::leftovers() {
  std::vector<std::string> found;
  const auto note = [&](std::size_t count, const char* what) {
    if (count != 0) found.push_back(std::to_string(count) + " " + what);
  };
  std::size_t drawables = 0;
  std::size_t gone = 0;
  std::size_t holders = 0;
  for (Document* document : open) {
    drawables += document->service().size();
    gone += document->service().forgetGone();
    holders += document->holders();
  }
  note(reactors.size(), "reactors are left");
  note(drawables, "drawables are left");
  note(gone, "drawables went without having been removed");
  note(graphics.attachedNodes(), "nodes weren't told that their drawable is gone");
  note(profile.held(), "objects of the profile weren't released");
  note(commands.heldFactories(), "command factories weren't released");
  note(holders, "drawings or their objects are held");
  return found;
}

void Host::clear() {
  reactors.clear();
  open.clear();
  documents.clear();
  applications.clear();
  applications.emplace_back(switchboard, *this);
  graphics.clear();
  profile.clear();
  messageLine.lines.clear();
}

}  // namespace foreign
