#include "workbench/host/document_manager.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tiepoint::workbench {

DocumentManager::~DocumentManager() { closeAll(); }

Document& DocumentManager::add(std::unique_ptr<Drawing> drawing) {
  open.push_back(std::make_unique<Document>(lastNumber + 1, std::move(drawing)));
  ++lastNumber;
  Document& document = *open.back();
  Document* const before = std::exchange(activeOne, &document);
  try {
    tell(&HostApDocManagerReactor::documentAdded, document);
  } catch (...) {
    tell(&HostApDocManagerReactor::documentToBeRemoved, document);
    erase(document);
    activeOne = before;
    throw;
  }
  tell(&HostApDocManagerReactor::documentActivated, document);
  return document;
}

void DocumentManager::close(int number) {
  Document& document = require(number);
  tell(&HostApDocManagerReactor::documentToBeRemoved, document);
  const bool wasActive = activeOne == &document;
  if (wasActive) activeOne = nullptr;
  erase(document);
  if (wasActive && !open.empty()) makeActive(open.back().get());
}

void DocumentManager::activate(int number) { makeActive(&require(number)); }

void DocumentManager::closeAll() {
  while (!open.empty()) close(open.front()->number());
}

std::vector<Document*> DocumentManager::all() const {
  std::vector<Document*> documents;
  documents.reserve(open.size());
  for (const auto& document : open) documents.push_back(document.get());
  return documents;
}

Document& DocumentManager::require(int number) const {
  const auto found =
      std::find_if(open.begin(), open.end(), [&](const auto& document) { return document->number() == number; });
  if (found == open.end()) throw NoDocument("there is no document " + std::to_string(number));
  return **found;
}

Document& DocumentManager::requireActive() const {
  if (!activeOne) throw NoDocument("there is no active document; open a drawing first");
  return *activeOne;
}

void DocumentManager::addReactor(HostApDocManagerReactor* reactor) { reactors.push_back(reactor); }

void DocumentManager::removeReactor(HostApDocManagerReactor* reactor) {
  const auto found = std::find(reactors.begin(), reactors.end(), reactor);
  if (found != reactors.end()) reactors.erase(found);
}

/// A reactor may come or go while the others are told: those that are gone aren't told any more.
void DocumentManager::tell(Event event, Document& document) {
  const std::vector<HostApDocManagerReactor*> listeners = reactors;
  for (HostApDocManagerReactor* listener : listeners) {
    if (std::find(reactors.begin(), reactors.end(), listener) != reactors.end()) (listener->*event)(&document);
  }
}

void DocumentManager::makeActive(Document* document) {
  if (activeOne == document) return;
  activeOne = document;
  tell(&HostApDocManagerReactor::documentActivated, *document);
}

void DocumentManager::erase(const Document& document) {
  open.erase(std::find_if(open.begin(), open.end(), [&](const auto& each) { return each.get() == &document; }));
}

}  // namespace tiepoint::workbench
