// The host's application object: the module's way to everything of the session.
#pragma once

class HostDocument;
class HostFileDialog;
class HostMessageLine;

/// Events of the host's document manager. The base does nothing.
class HostApDocManagerReactor {
 public:
  virtual ~HostApDocManagerReactor() = default;

  virtual void documentCreateStarted(HostDocument*) {}
  /// A document has come in.
  virtual void documentAdded(HostDocument*) {}
  /// A document is about to go; it still stands.
  virtual void documentToBeRemoved(HostDocument*) {}
  virtual void documentActivated(HostDocument*) {}
};

class HostApplication {
 public:
  virtual ~HostApplication() = default;

  /// The active document, or null.
  virtual HostDocument* activeDocument() = 0;
  virtual void addReactor(HostApDocManagerReactor* reactor) = 0;
  virtual void removeReactor(HostApDocManagerReactor* reactor) = 0;
  /// The host's command line, or null.
  virtual HostMessageLine* messageLine() = 0;
  /// The host's open-file dialog, or null.
  virtual HostFileDialog* fileDialog() = 0;
};
