#include "switchboard.h"

namespace foreign {

void Switchboard::expectFault(Fault fault, std::uint64_t number) {
  plannedFault = fault;
  faultNumber = number;
  count = 0;
  spoiled.clear();
}

Fault Switchboard::next(const char* call) {
  ++count;
  if (count != faultNumber) return Fault::none;
  spoiled = call;
  return plannedFault;
}

}  // namespace foreign
