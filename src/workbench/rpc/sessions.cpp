#include "workbench/rpc/sessions.h"

#include <string>
#include <utility>

namespace tiepoint::workbench {

namespace {

NoSession noSessionOf(std::uint64_t number) { return NoSession("there is no session " + std::to_string(number)); }

}  // namespace

std::uint64_t Sessions::begin(SessionPtr session) {
  open.emplace(lastNumber + 1, std::make_unique<MirroredSession>(std::move(session)));
  return ++lastNumber;
}

void Sessions::end(std::uint64_t number) {
  if (open.erase(number) == 0) throw noSessionOf(number);
}

void Sessions::endAll() {
  while (!open.empty()) open.erase(std::prev(open.end()));
}

MirroredSession& Sessions::require(std::uint64_t number) const {
  const auto found = open.find(number);
  if (found == open.end()) throw noSessionOf(number);
  return *found->second;
}

std::uint64_t Sessions::newest() const {
  if (open.empty()) throw NoSession("no session is open; begin one with session.begin");
  return open.rbegin()->first;
}

}  // namespace tiepoint::workbench
