#include "document_cases.h"

#include <stdexcept>

#include "stage.h"

namespace foreign {

namespace {

void require(bool holds, const std::string& sentence) {
  if (!holds) throw std::runtime_error(sentence);
}

/// Closes the active document when the dialog is open.
class ClosingUser {
 public:
  explicit ClosingUser(Host& host_) : host(host_) {
    host.dialog.whileOpen = [this] { host.closeDocument(*host.activeDocument()); };
  }
  ~ClosingUser() { host.dialog.whileOpen = nullptr; }
  ClosingUser(const ClosingUser&) = delete;
  ClosingUser& operator=(const ClosingUser&) = delete;

 private:
  Host& host;
};

std::size_t fileCount(const Options& options) {
  std::size_t count = 0;
  for (const ImportFiles& files : options.imports) count += files.paths.size();
  return count;
}

/// Imports once; the active document is closed in the course of it.
void importWhileClosing(const std::string& when, Host& host, SurveyRun& run, const Steps& steps) {
  host.messageLine.lines.clear();
  const ClosingUser user(host);
  run.importFiles();
  requireGood(when, steps, host);
}

Options firstLayout(const Options& options) {
  Options first = options;
  first.imports.resize(1);
  return first;
}

void closeTheOnlyDocument(Host& host, const Module& module, const Options& options) {
  const std::string when = "closing the only document";
  Steps steps;
  SurveyRun run(host, module, options, steps);
  host.openDocument();
  importWhileClosing(when, host, run, steps);
  require(host.messageLine.lines.empty(), when + ": the import went on");
}

void closeUnderASession(Host& host, const Module& module, const Options& options) {
  const std::string when = "closing the document of a session";
  Steps steps;
  SurveyRun run(host, module, options, steps);
  host.openDocument();
  run.beginSession();
  {
    host.messageLine.lines.clear();
    const ClosingUser user(host);
    run.importFiles();
  }
  require(host.messageLine.lines.empty(), when + ": the import went on");
  std::map<ZOR::reg::GroupId, std::string> groups;
  require(!run.operations()->getAvailableGroups(groups), when + ": the session has groups");
  run.operations()->zoomToAll();
  Document& next = host.openDocument();
  require(next.service().size() == 1, when + ": the next document doesn't show the session");
  run.endSession();
  requireGood(when, steps, host);
  host.closeDocument(next);
}

void closeTheUpperDocument(Host& host, const Module& module, const Options& options) {
  const std::string when = "closing the upper one of two documents";
  Steps steps;
  SurveyRun run(host, module, options, steps);
  Document& lower = host.openDocument();
  host.openDocument();
  importWhileClosing(when, host, run, steps);
  require(lower.groupCount() == fileCount(options), when + ": the lower one hasn't taken the groups in");
  host.closeDocument(lower);
}

/// Ends the session with both documents open, or after one of them was closed.
enum class Going { neither, first, second };

std::string surveyWithSecondDocument(Host& host, const Module& module, const Options& options, Going going) {
  const std::string when = "two documents, of which number " + std::to_string(static_cast<int>(going)) + " goes";
  Steps steps;
  SurveyRun run(host, module, options, steps);
  Document& first = host.openDocument();
  run.importFiles();
  run.beginSession();
  run.choose();
  run.solve();
  run.takeResults();
  Document& second = host.openDocument();
  run.look();
  if (going == Going::first) host.closeDocument(first);
  if (going == Going::second) host.closeDocument(second);
  run.look();
  run.endSession();
  // A document keeps the drawable when another comes in; there its node tells that it is gone.
  if (going != Going::first) first.service().forgetGone();
  requireGood(when, steps, host);
  if (going != Going::first) host.closeDocument(first);
  if (going != Going::second) host.closeDocument(second);
  requireNone(when, audit(host));
  return figuresOf(run.findings());
}

}  // namespace

std::string playCloseInDialog(Host& host, const Options& options) {
  const ProfileLibrary profile;
  const Module module(host, options.module);
  const Options oneImport = firstLayout(options);
  closeTheOnlyDocument(host, module, oneImport);
  closeUnderASession(host, module, oneImport);
  closeTheUpperDocument(host, module, oneImport);
  return goodSurvey("after all closings", host, module, options);
}

std::string playTwoDocuments(Host& host, const Options& options) {
  const ProfileLibrary profile;
  const Module module(host, options.module);
  std::string figures = surveyWithSecondDocument(host, module, options, Going::neither);
  for (const Going going : {Going::first, Going::second}) {
    if (surveyWithSecondDocument(host, module, options, going) != figures) {
      throw std::runtime_error("the figures depend on the documents that go");
    }
  }
  return figures;
}

}  // namespace foreign
