// One survey in this host, from the files to the results.
#pragma once

#include <memory>
#include <string>

#include "figures.h"
#include "host.h"
#include "module.h"
#include "options.h"
#include "steps.h"

namespace foreign {

/// Every operation is one step, and is tried whatever became of those before it.
class SurveyRun {
 public:
  /// The host must have an active document. Files of results go into a folder that is emptied first.
  SurveyRun(Host& host, const Module& module, const Options& options, Steps& steps);
  ~SurveyRun();
  SurveyRun(const SurveyRun&) = delete;
  SurveyRun& operator=(const SurveyRun&) = delete;

  /// Runs the import command once for each layout.
  void importFiles();
  /// Tries twice: a host that was refused asks again.
  void beginSession();
  /// All groups enter, a base is set; switches are thrown and put back.
  void choose();
  void look();
  void solve();
  /// Takes the results out of the session into clouds, files and the drawing.
  void takeResults();
  /// Solves the same once more.
  void solveAgain();
  void endSession();

  /// All of the above.
  void runAll();

  ZOR::reg::iMultiRegistrator* operations() { return session.get(); }
  const Findings& findings() const { return found; }

 private:
  void switchPoint();
  void probeTransforms();
  void moveClouds();
  void takeReports();
  void saveFiles();
  void storeTargets();
  std::uint64_t cloudNumber(const std::string& name);
  ZOR::reg::GroupIdSet groupIds() const;

  Host& host;
  const Module& module;
  const Options& options;
  Steps& steps;
  std::unique_ptr<ZOR::reg::iMultiRegistrator> session;
  Findings found;
  ZOR::reg::NamedIdList clouds;
};

}  // namespace foreign
