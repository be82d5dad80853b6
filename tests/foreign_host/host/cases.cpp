#include "cases.h"

#include <cstdio>
#include <stdexcept>

#include "document_cases.h"
#include "fault_cases.h"
#include "stage.h"

namespace foreign {

namespace {

void requireEqual(const std::string& when, const std::string& expected, const std::string& found) {
  if (found != expected) throw std::runtime_error(when + ": other figures than at first");
}

void requireGone(const Options& options) {
  if (isInMemory(options.module)) throw std::runtime_error("the module is still in memory after it was unloaded");
}

std::string playFigures(Host& host, const Options& options) {
  const ProfileLibrary profile;
  const Module module(host, options.module);
  return goodSurvey("a survey", host, module, options);
}

std::string playDrawAtOnce(Host& host, const Options& options) {
  host.graphics.drawsAtOnce = true;
  const std::string figures = playFigures(host, options);
  // Many refreshes have drawn all points, not only the adding and the removing nothing.
  if (host.graphics.drawn.lines < 1000) throw std::runtime_error("nothing was drawn at once");
  std::fprintf(stderr, "draw-at-once: %zu draws with %zu lines\n", host.graphics.draws, host.graphics.drawn.lines);
  return figures;
}

std::string playNoProfile(Host& host, const Options& options) {
  host.hasProfile = false;
  std::string withoutLibrary;
  {
    const Module module(host, options.module);
    withoutLibrary = goodSurvey("without GetApp", host, module, options);
  }
  const ProfileLibrary profile;
  const Module module(host, options.module);
  const std::string figures = goodSurvey("with a GetApp that gives null", host, module, options);
  requireEqual("with a GetApp that gives null", withoutLibrary, figures);
  return figures;
}

std::string playUnload(Host& host, const Options& options) {
  const ProfileLibrary profile;
  std::string first;
  {
    const Module module(host, options.module);
    first = goodSurvey("before the unloading", host, module, options);
  }
  requireGone(options);
  std::string second;
  {
    const Module module(host, options.module);
    second = goodSurvey("after the loading anew", host, module, options);
  }
  requireGone(options);
  requireEqual("after the loading anew", first, second);
  return second;
}

}  // namespace

std::string playCase(const Options& options) {
  Host& host = Host::instance();
  const std::string& name = options.caseName;
  if (name == "figures") return playFigures(host, options);
  if (name == "draw-at-once") return playDrawAtOnce(host, options);
  if (name == "no-profile") return playNoProfile(host, options);
  if (name == "unload") return playUnload(host, options);
  if (name == "close-in-dialog") return playCloseInDialog(host, options);
  if (name == "two-documents") return playTwoDocuments(host, options);
  if (name == "null") return playFaults(host, options, Fault::nothing);
  if (name == "empty") return playFaults(host, options, Fault::emptiness);
  if (name == "throw") return playFaults(host, options, Fault::exception);
  if (name == "throw-late") return playFaults(host, options, Fault::lateException);
  throw std::runtime_error("no such case: " + name);
}

}  // namespace foreign
