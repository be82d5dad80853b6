// The open documents, which of them is active, and who wants to know.
#pragma once

#include <memory>
#include <stdexcept>
#include <vector>

#include "platform/host/application.h"
#include "workbench/host/document.h"

namespace tiepoint::workbench {

/// No active document, or no document of that number.
class NoDocument : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class DocumentManager {
 public:
  DocumentManager() = default;
  /// Closes all documents.
  ~DocumentManager();
  DocumentManager(const DocumentManager&) = delete;
  DocumentManager& operator=(const DocumentManager&) = delete;

  /// Takes a drawing in as the active document, under the next number. The reactors hear of a
  /// document that is active already. When one of them throws, the document goes again.
  Document& add(std::unique_ptr<Drawing> drawing);
  /// The reactors hear of it while the document still stands. The newest of those that stay open
  /// becomes active when the active one goes. Throws NoDocument.
  void close(int number);
  void activate(int number);
  void closeAll();

  /// In the order of their numbers.
  std::vector<Document*> all() const;
  /// Null when none is open.
  Document* active() const { return activeOne; }
  /// Throw NoDocument.
  Document& require(int number) const;
  Document& requireActive() const;

  void addReactor(HostApDocManagerReactor* reactor);
  void removeReactor(HostApDocManagerReactor* reactor);

 private:
  using Event = void (HostApDocManagerReactor::*)(HostDocument*);
  void tell(Event event, Document& document);
  void makeActive(Document* document);
  void erase(const Document& document);

  /// In the order of their numbers.
  std::vector<std::unique_ptr<Document>> open;
  Document* activeOne = nullptr;
  int lastNumber = 0;
  std::vector<HostApDocManagerReactor*> reactors;
};

}  // namespace tiepoint::workbench
