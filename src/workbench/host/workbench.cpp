#include "workbench/host/workbench.h"

#include <boost/filesystem/path.hpp>
#include <boost/locale/utf8_codecvt.hpp>
#include <locale>
#include <optional>
#include <stdexcept>
#include <utility>

#include "workbench/host/message_line.h"
#include "workbench/host/standing_host.h"
#include "workbench/host/transactions.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

namespace {

/// Narrow paths are UTF-8 on every platform, here and in the modules that share the library.
void useUtf8Paths() {
  boost::filesystem::path::imbue(std::locale(std::locale::classic(), new boost::locale::utf8_codecvt<wchar_t>));
}

/// As the first of the workbench's parts, it runs before any path is made.
struct Utf8Paths {
  Utf8Paths() { useUtf8Paths(); }
};

/// The dialog's answer, for as long as one command runs.
class AnswerInForce {
 public:
  AnswerInForce(PreparedFileDialog& dialog_, const DialogAnswer& answer) : dialog(dialog_) { dialog.prepare(answer); }
  ~AnswerInForce() { dialog.forget(); }
  AnswerInForce(const AnswerInForce&) = delete;
  AnswerInForce& operator=(const AnswerInForce&) = delete;

 private:
  PreparedFileDialog& dialog;
};

}  // namespace

class Workbench::State final : private Utf8Paths, public StandingHost {
 public:
  State(Workbench& owner_, const std::string& profileFile) : owner(owner_), profile(profileFile) {}

  HostApplication& application() override { return owner; }
  ICmdFactory* newCommandFactory() override { return commands.newFactory(); }
  HostAppService* newAppService() override { return profile.newAppService(); }
  void refresh() override { ++redraws; }

  std::vector<OdDbDatabasePtr> databases() const {
    std::vector<OdDbDatabasePtr> all;
    for (Document* document : documents.all()) all.push_back(document->database());
    return all;
  }

  Workbench& owner;
  Profile profile;
  CommandRegistry commands;
  MessageLine messages;
  PreparedFileDialog dialog;
  std::uint64_t redraws = 0;
  DocumentManager documents;
  std::optional<LoadedModule> module;
};

/// The module comes when everything that it may ask for stands, and goes before any of that.
Workbench::Workbench(const Options& options) : state(std::make_unique<State>(*this, options.profile)) {
  state->module.emplace(options.module.empty() ? installedModule() : options.module, state->commands);
}

Workbench::~Workbench() {
  state->documents.closeAll();
  state->module.reset();
}

SessionPtr Workbench::newSession() {
  state->documents.requireActive();
  return state->module->newSession();
}

std::array<int, 4> Workbench::apiVersion() const { return state->module->apiVersion(); }

const std::string& Workbench::modulePath() const { return state->module->path(); }

const std::vector<RegisteredCommand>& Workbench::commands() const { return state->commands.commands(); }

Document& Workbench::openDocument(const std::string& path, bool createWhenMissing) {
  return state->documents.add(Drawing::open(path, createWhenMissing));
}

Document& Workbench::openTemporaryDocument() { return state->documents.add(Drawing::temporary()); }

void Workbench::closeDocument(int number) { state->documents.close(number); }

void Workbench::activateDocument(int number) { state->documents.activate(number); }

std::vector<Document*> Workbench::documents() { return state->documents.all(); }

Document& Workbench::requireDocument(int number) { return state->documents.require(number); }

Document& Workbench::requireActiveDocument() { return state->documents.requireActive(); }

void Workbench::inTransaction(const std::function<void()>& action) {
  Transactions transactions(state->databases());
  action();
  transactions.commit();
}

std::vector<std::wstring> Workbench::runCommand(const std::wstring& globalName, const DialogAnswer& answer) {
  const RegisteredCommand* const command = state->commands.find(globalName);
  if (!command) throw std::invalid_argument("no command " + utf8FromWide(globalName) + " is registered");
  const AnswerInForce answerInForce(state->dialog, answer);
  state->messages.take();
  Transactions transactions(state->databases());
  try {
    command->body();
  } catch (...) {
    transactions.commit();
    throw;
  }
  transactions.commit();
  return state->messages.take();
}

Profile& Workbench::profile() { return state->profile; }

std::uint64_t Workbench::redrawCount() const { return state->redraws; }

HostDocument* Workbench::activeDocument() { return state->documents.active(); }

void Workbench::addReactor(HostApDocManagerReactor* reactor) { state->documents.addReactor(reactor); }

void Workbench::removeReactor(HostApDocManagerReactor* reactor) { state->documents.removeReactor(reactor); }

HostMessageLine* Workbench::messageLine() { return &state->messages; }

HostFileDialog* Workbench::fileDialog() { return &state->dialog; }

}  // namespace tiepoint::workbench
