// The whole host.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "application.h"
#include "commands.h"
#include "document.h"
#include "file_dialog.h"
#include "graphics.h"
#include "message_line.h"
#include "profile.h"
#include "switchboard.h"

namespace foreign {

/// What a module finds behind the exports. It starts without a document.
class Host {
 public:
  /// The one host of this process.
  static Host& instance();

  /// The application object of now.
  Application& application() { return applications.back(); }
  /// The document that was opened last and still is open, or null.
  Document* activeDocument() { return open.empty() ? nullptr : open.back(); }

  /// Opens an empty document, and tells the reactors.
  Document& openDocument();
  /// Tells the reactors and closes the document, also when a reactor throws; the exception goes on.
  /// Of the active document and the application object nothing may be used afterwards: another
  /// application object takes over.
  void closeDocument(Document& document);

  void refresh(unsigned char argument);

  /// What a module has left behind that holds no session: reactors, drawables, counted objects,
  /// nodes, objects held open. One sentence each.
  std::vector<std::string> leftovers();
  /// Lets go of everything that the host keeps of modules, documents and objects that are over.
  void clear();

  Switchboard switchboard;
  Graphics graphics{switchboard};
  MessageLine messageLine{switchboard};
  FileDialog dialog{switchboard};
  ProfileObjects profile{switchboard};
  Commands commands{switchboard};
  std::vector<HostApDocManagerReactor*> reactors;
  /// Without one, "GetApp" gives null.
  bool hasProfile = true;

 private:
  Host() { applications.emplace_back(switchboard, *this); }

  /// Those that are over are kept, see HostObject.
  std::deque<Application> applications;
  std::deque<Document> documents;
  std::vector<Document*> open;
};

}  // namespace foreign
