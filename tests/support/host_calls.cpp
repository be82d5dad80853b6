#include "support/host_calls.h"

#include <array>
#include <charconv>
#include <utility>

namespace tiepoint::testing {

namespace {

template <class Triple>
std::string spelledTriple(const Triple& t) {
  return "(" + spelled(t.x) + " " + spelled(t.y) + " " + spelled(t.z) + ")";
}

}  // namespace

std::string spelled(int number) { return std::to_string(number); }

std::string spelled(double number) {
  std::array<char, 32> digits{};
  const std::to_chars_result result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  return std::string(digits.data(), result.ptr);
}

std::string spelled(const OdGePoint3d& point) { return spelledTriple(point); }

std::string spelled(const OdGeVector3d& vector) { return spelledTriple(vector); }

std::string spelled(std::wstring_view text) {
  std::string result;
  for (const wchar_t character : text) {
    const bool isAscii = character >= 0x20 && character < 0x7F;
    result += isAscii ? static_cast<char>(character) : '?';
  }
  return result;
}

void HostCalls::clear() {
  spelt.clear();
  counted = 0;
}

void HostCalls::failAt(std::uint64_t n, Fault fault) {
  callsUntilFault = n;
  wantedFault = fault;
  failed = false;
}

bool HostCalls::passes() {
  ++counted;
  if (callsUntilFault == 0 || --callsUntilFault != 0) return true;
  failed = true;
  if (wantedFault == Fault::throws) throw HostFault();
  return false;
}

void HostCalls::note(std::string name, const std::vector<std::string>& arguments) {
  const char* before = "(";
  for (const std::string& argument : arguments) {
    name.append(before).append(argument);
    before = ", ";
  }
  if (!arguments.empty()) name += ")";
  note(std::move(name));
}

}  // namespace tiepoint::testing
