// A process whose host has left nothing of the locale in order.
#pragma once

#include <locale>
#include <string>

namespace tiepoint::testing {

/// While it stands, the global locale writes decimal commas and groups of three digits, counts every
/// byte above 0x7F as a blank, knows no lower case, widens every character to '#' and converts
/// nothing between files and text; Boost.Filesystem's paths have the classic locale's characters
/// alone; and the C library has decimal commas, with 0x85 and 0xA0 as blanks.
class HostileLocale {
 public:
  HostileLocale();
  ~HostileLocale();
  HostileLocale(const HostileLocale&) = delete;
  HostileLocale& operator=(const HostileLocale&) = delete;

  /// False on a system that can't compile a locale for the C library; the others are in force then.
  bool isOfCLibrary() const { return cLibraryHasIt; }

 private:
  std::locale globalBefore;
  std::locale pathsBefore;
  std::string cLibraryBefore;
  bool cLibraryHasIt;
};

/// What `action` gives in the hostile locale; the test goes on in the one before.
template <class Action>
auto inHostileLocale(const Action& action) {
  const HostileLocale hostile;
  return action();
}

}  // namespace tiepoint::testing
