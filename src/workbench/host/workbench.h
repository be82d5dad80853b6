// The stand-alone host: documents, the module, its commands, and what both say.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/host/application.h"
#include "platform/host/file_dialog.h"
#include "platform/host/message_line.h"
#include "session/i_multi_registrator.h"
#include "workbench/host/command_registry.h"
#include "workbench/host/document_manager.h"
#include "workbench/host/file_dialog.h"
#include "workbench/host/loaded_module.h"
#include "workbench/profile/profile.h"

namespace tiepoint::workbench {

using SessionPtr = std::unique_ptr<ZOR::reg::iMultiRegistrator>;

/// One host in this process. While it stands, the exports of the executable (get_host_funcptr and
/// the others) answer with it, so there is one at a time.
class Workbench : public HostApplication {
 public:
  struct Options {
    /// UTF-8; empty: a profile that lives in memory.
    std::string profile;
    /// UTF-8; empty: TSL_Registration beside the executable, or in the library folder of its
    /// installation. Never the working directory.
    std::string module;
  };

  /// Loads the module, whose commands register themselves meanwhile. Throws ModuleError.
  explicit Workbench(const Options& options);
  /// Closes all documents and unloads the module. All sessions must be gone.
  ~Workbench() override;

  // --- The module.
  /// Throws NoDocument when no document is active: a session draws into it from the start.
  SessionPtr newSession();
  std::array<int, 4> apiVersion() const;
  /// UTF-8, absolute.
  const std::string& modulePath() const;
  const std::vector<RegisteredCommand>& commands() const;

  // --- Documents. The newest of several open ones becomes active when the active one is closed.
  /// Opens (creating it when missing, unless told otherwise) and activates. Throws OdError.
  Document& openDocument(const std::string& path, bool createWhenMissing = true);
  /// A drawing in memory, activated.
  Document& openTemporaryDocument();
  /// Both throw NoDocument.
  void closeDocument(int number);
  void activateDocument(int number);
  /// In the order of their numbers.
  std::vector<Document*> documents();
  /// Throws NoDocument.
  Document& requireDocument(int number);
  Document& requireActiveDocument();

  /// Runs `action` inside one transaction of every open document. When it throws, or a file can't
  /// be written, all is undone and the exception goes on.
  void inTransaction(const std::function<void()>& action);

  /// Runs a registered command by its global name, inside a transaction, with that answer for its
  /// file dialog; gives what it printed on the message line, in order. When the command itself throws,
  /// what it had stored up to then stays in the drawing, and the exception goes on; when a file
  /// can't be written, all is undone. Throws std::invalid_argument for a command that isn't
  /// registered.
  std::vector<std::wstring> runCommand(const std::wstring& globalName, const DialogAnswer& answer);

  Profile& profile();
  /// How often the module has asked for a refresh of the views.
  std::uint64_t redrawCount() const;

  // --- HostApplication
  HostDocument* activeDocument() override;
  void addReactor(HostApDocManagerReactor* reactor) override;
  void removeReactor(HostApDocManagerReactor* reactor) override;
  HostMessageLine* messageLine() override;
  HostFileDialog* fileDialog() override;

 private:
  class State;
  std::unique_ptr<State> state;
};

}  // namespace tiepoint::workbench
