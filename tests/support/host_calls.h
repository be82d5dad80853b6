// What a module asks of its host, call by call: in words, counted, and made to fail on demand.
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sdk/od_ge_matrix3d.h"

namespace tiepoint::testing {

/// What a host that fails does: it throws HostFault, or has nothing to give.
enum class Fault { throws, givesNull };

struct HostFault : std::runtime_error {
  HostFault() : std::runtime_error("the host fails as it was told") {}
};

/// A number with the fewest digits that read back the same.
std::string spelled(int number);
std::string spelled(double number);
/// "(x y z)".
std::string spelled(const OdGePoint3d& point);
std::string spelled(const OdGeVector3d& vector);
/// Plain ASCII; every other character becomes "?".
std::string spelled(std::wstring_view text);
inline std::string spelled(const wchar_t* text) { return text ? spelled(std::wstring_view(text)) : "null"; }
inline std::string spelled(const char* text) { return text; }

class HostCalls {
 public:
  /// To be asked at the head of every call, before it takes effect. False when this call is to give
  /// nothing; throws HostFault when it is to throw. The words are "name(argument, argument)".
  template <class... Arguments>
  bool arrives(std::string_view name, const Arguments&... arguments) {
    return arrivesAt({}, name, arguments...);
  }
  /// With words that begin with `where`.
  template <class... Arguments>
  bool arrivesAt(std::string_view where, std::string_view name, const Arguments&... arguments) {
    if (!isHeard) return true;
    if (atEachCall) atEachCall();
    if (isSpelt) note(std::string(where).append(name), {spelled(arguments)...});
    return passes();
  }

  /// Done at the head of every call that is heard, when set.
  std::function<void()> atEachCall;

  /// Adds an event of a test's own to the words. It is no call and isn't counted.
  void note(std::string event) { spelt.push_back(std::move(event)); }

  const std::vector<std::string>& words() const { return spelt; }
  std::uint64_t count() const { return counted; }
  /// Forgets the words and counts from 0; what is to fail stays so.
  void clear();
  /// The words of what `action` calls, and of nothing before it.
  template <class Action>
  std::vector<std::string> during(Action&& action) {
    clear();
    action();
    return spelt;
  }

  /// Without words no call allocates here: for tests of exhausted memory.
  void spell(bool wanted) { isSpelt = wanted; }
  /// Calls that aren't heard are neither spelt nor counted, and never fail.
  void hear(bool wanted) { isHeard = wanted; }

  /// The n-th call from now on (1: the very next) fails; all others work. It replaces an earlier order.
  void failAt(std::uint64_t n, Fault fault);
  void stopFailing() { callsUntilFault = 0; }
  /// True once the call of the last order has failed.
  bool hasFailed() const { return failed; }

 private:
  bool passes();
  void note(std::string name, const std::vector<std::string>& arguments);

  std::vector<std::string> spelt;
  std::uint64_t counted = 0;
  /// 0: no call is to fail.
  std::uint64_t callsUntilFault = 0;
  Fault wantedFault = Fault::throws;
  bool failed = false;
  bool isSpelt = true;
  bool isHeard = true;
};

}  // namespace tiepoint::testing
