// Element of the name tables.
#pragma once

#include <cstdint>
#include <string>

namespace ZOR::reg {

struct NamedId {
  std::uint64_t id = 0;
  /// Narrow, windows-1251; compared byte by byte.
  std::string name;
};

}  // namespace ZOR::reg
