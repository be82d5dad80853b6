#include "fault_cases.h"

#include <cstdio>
#include <stdexcept>

#include "stage.h"

namespace foreign {

namespace {

/// What happens in the survey that is spoiled.
enum class Course {
  oneDocument,
  /// A second document comes in and goes while the session stands.
  secondDocument
};

class FaultSweep {
 public:
  FaultSweep(Host& host_, const Options& options_, Fault fault_, Course course_)
      : host(host_), options(options_), fault(fault_), course(course_) {
    const Module module(host, options.module);
    expected = goodSurvey("before all faults", host, module, options);
  }

  void run() {
    if (options.onlyCall != 0) {
      spoil(options.onlyCall);
    } else {
      for (std::uint64_t number = 1; spoil(number); ++number) {
      }
      if (calls == 0 || calls != spoiled) failed.emplace_back("not every call was spoiled once");
    }
  }

  /// One line for the reader.
  std::string summary() const {
    return options.caseName + (course == Course::secondDocument ? " with a second document" : "") + ": calls " +
           std::to_string(calls) + ", survived " + std::to_string(spoiled - failed.size()) + " of " +
           std::to_string(spoiled);
  }
  const std::string& figures() const { return expected; }
  const std::vector<std::string>& failures() const { return failed; }

 private:
  /// False when the survey was over before that call.
  bool spoil(std::uint64_t number) {
    std::unique_ptr<Module> module;
    Steps steps;
    host.switchboard.expectFault(fault, number);
    survey(module, steps);
    const bool isReached = !host.switchboard.spoiledCall().empty();
    when = "call " + std::to_string(number) + ", " + host.switchboard.spoiledCall();
    calls = host.switchboard.callCount();
    host.switchboard.expectFault(Fault::none, 0);
    if (isReached) judge(module, steps);
    host.clear();
    module.reset();
    return isReached;
  }

  void survey(std::unique_ptr<Module>& module, Steps& steps) {
    steps.take("loading the module", [&] {
      module = std::make_unique<Module>(host, options.module);
      return true;
    });
    if (!module) return;
    Document& document = host.openDocument();
    SurveyRun run(host, *module, options, steps);
    if (course == Course::oneDocument) {
      run.runAll();
      return;
    }
    run.beginSession();
    run.importFiles();
    run.choose();
    openAndClose(document, steps);
    run.look();
    run.solve();
    run.endSession();
    // The first document kept the drawable when the second came in; see the case of two documents.
    document.service().forgetGone();
  }

  /// Another document than the one that is open.
  void openAndClose(const Document& first, Steps& steps) {
    steps.take("opening a second document", [&] {
      host.openDocument();
      return true;
    });
    steps.take("closing it", [&] {
      if (host.activeDocument() != &first) host.closeDocument(*host.activeDocument());
      return true;
    });
  }

  /// What the spoiled survey has left, and whether the next one is as good as ever.
  void judge(std::unique_ptr<Module>& module, const Steps& steps) {
    ++spoiled;
    try {
      requireNone(when, steps.wrong());
      if (fault == Fault::nothing || fault == Fault::emptiness) requireNone(when, steps.faulted());
      if (steps.faulted().size() > 1) requireNone(when + " came out twice", steps.faulted());
      requireNone(when, audit(host));
      host.clear();
      // A command that couldn't be added at the loading is there after the next loading.
      if (!module || !host.commands.has(importCommand)) {
        module.reset();
        module = std::make_unique<Module>(host, options.module);
      }
      if (goodSurvey(when + ", the survey after it", host, *module, options) != expected) {
        throw std::runtime_error(when + ": the survey after it has other figures");
      }
    } catch (const std::exception& error) {
      failed.emplace_back(error.what());
      host.switchboard.takeComplaints();
    }
  }

  Host& host;
  const Options& options;
  Fault fault;
  Course course;
  std::string expected;
  std::string when;
  std::uint64_t calls = 0;
  std::uint64_t spoiled = 0;
  std::vector<std::string> failed;
};

}  // namespace

std::string playFaults(Host& host, const Options& options, Fault fault) {
  const ProfileLibrary profile;
  // What has half come about is drawn at once, too.
  host.graphics.drawsAtOnce = true;
  std::vector<std::string> failures;
  std::string figures;
  for (const Course course : {Course::oneDocument, Course::secondDocument}) {
    FaultSweep sweep(host, options, fault, course);
    sweep.run();
    std::fprintf(stderr, "%s\n", sweep.summary().c_str());
    failures.insert(failures.end(), sweep.failures().begin(), sweep.failures().end());
    figures = sweep.figures();
  }
  requireNone("not survived", failures);
  return figures;
}

}  // namespace foreign
