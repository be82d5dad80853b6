// Operations that are tried one after the other, whatever becomes of them.
#pragma once

#include <exception>
#include <string>
#include <vector>

#include "switchboard.h"

namespace foreign {

/// What didn't go as it should in the steps so far.
class Steps {
 public:
  /// Runs one operation; what it throws goes no further. True when it did and said so.
  template <class Operation>
  bool take(const std::string& name, Operation operation) {
    try {
      if (operation()) return true;
      refusedSteps.push_back(name + " was refused");
    } catch (const InjectedFault& fault) {
      faultedSteps.push_back(name + ": " + fault.what());
    } catch (const std::exception& error) {
      wrongSteps.push_back(name + ": " + error.what());
    } catch (...) {
      wrongSteps.push_back(name + ": an exception of no known class");
    }
    return false;
  }

  /// Operations that said no.
  const std::vector<std::string>& refused() const { return refusedSteps; }
  /// Operations out of which the host's own exception came.
  const std::vector<std::string>& faulted() const { return faultedSteps; }
  /// Operations out of which another exception came.
  const std::vector<std::string>& wrong() const { return wrongSteps; }

 private:
  std::vector<std::string> refusedSteps;
  std::vector<std::string> faultedSteps;
  std::vector<std::string> wrongSteps;
};

}  // namespace foreign
