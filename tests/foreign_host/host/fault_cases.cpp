#include "fault_cases.h"

#include <cstdio>
#include <stdexcept>

#include "stage.h"

namespace foreign {

namespace {

class FaultSweep {
 public:
  FaultSweep(Host& host_, const Options& options_, Fault fault_) : host(host_), options(options_), fault(fault_) {
    const Module module(host, options.module);
    expected = goodSurvey("before all faults", host, module, options);
  }

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

  const std::string& figures() const { return expected; }
  std::uint64_t callCount() const { return calls; }
  std::uint64_t spoiledCount() const { return spoiled; }
  const std::vector<std::string>& failures() const { return failed; }

 private:
  void survey(std::unique_ptr<Module>& module, Steps& steps) {
    steps.take("loading the module", [&] {
      module = std::make_unique<Module>(host, options.module);
      return true;
    });
    if (!module) return;
    host.openDocument();
    SurveyRun(host, *module, options, steps).runAll();
  }

  /// What the spoiled survey has left, and whether the next one is as good as ever.
  void judge(std::unique_ptr<Module>& module, const Steps& steps) {
    ++spoiled;
    try {
      requireNone(when, steps.wrong());
      if (fault == Fault::nothing) requireNone(when, steps.faulted());
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
  std::string expected;
  std::string when;
  std::uint64_t calls = 0;
  std::uint64_t spoiled = 0;
  std::vector<std::string> failed;
};

}  // namespace

std::string playFaults(Host& host, const Options& options, Fault fault) {
  const ProfileLibrary profile;
  FaultSweep sweep(host, options, fault);
  if (options.onlyCall != 0) {
    sweep.spoil(options.onlyCall);
  } else {
    for (std::uint64_t number = 1; sweep.spoil(number); ++number) {
    }
  }
  const std::size_t survived = sweep.spoiledCount() - sweep.failures().size();
  std::fprintf(stderr, "%s: calls %llu, survived %zu of %llu\n", options.caseName.c_str(),
               static_cast<unsigned long long>(sweep.callCount()), survived,
               static_cast<unsigned long long>(sweep.spoiledCount()));
  requireNone("not survived", sweep.failures());
  return sweep.figures();
}

}  // namespace foreign
