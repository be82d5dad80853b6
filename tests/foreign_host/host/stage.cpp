#include "stage.h"

#include <stdexcept>

namespace foreign {

void requireNone(const std::string& when, const std::vector<std::string>& sentences) {
  if (sentences.empty()) return;
  std::string text = when + ":";
  for (const std::string& sentence : sentences) text += "\n  " + sentence;
  throw std::runtime_error(text);
}

std::vector<std::string> audit(Host& host) {
  std::vector<std::string> sentences = host.leftovers();
  for (std::string& complaint : host.switchboard.takeComplaints()) sentences.push_back(std::move(complaint));
  return sentences;
}

void requireGood(const std::string& when, const Steps& steps, Host& host) {
  requireNone(when, steps.wrong());
  requireNone(when, steps.faulted());
  requireNone(when, steps.refused());
  requireNone(when, audit(host));
}

std::string goodSurvey(const std::string& when, Host& host, const Module& module, const Options& options) {
  Steps steps;
  Document& document = host.openDocument();
  SurveyRun run(host, module, options, steps);
  run.runAll();
  requireGood(when, steps, host);
  host.closeDocument(document);
  requireNone(when, audit(host));
  return figuresOf(run.findings());
}

ProfileLibrary::ProfileLibrary() : library(loadLibrary(programFolder() / libraryFile("ZorApp"))) {}

ProfileLibrary::~ProfileLibrary() { unloadLibrary(library); }

}  // namespace foreign
