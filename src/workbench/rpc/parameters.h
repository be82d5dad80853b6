// The parameters of one request, read by name and type.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "workbench/rpc/json_values.h"
#include "workbench/rpc/rpc_error.h"

namespace tiepoint::workbench {

/// Every reader throws BadParameter for a parameter that is missing or doesn't read.
class Parameters {
 public:
  /// `object` must outlive this.
  explicit Parameters(const Json& object) : members(object) {}

  /// Throws BadParameter for the first parameter that isn't among `known`.
  void requireKnown(const std::vector<std::string>& known) const;

  bool has(const std::string& parameter) const { return members.contains(parameter); }

  /// By a conversion from Json that throws BadValue.
  template <class Convert>
  auto read(const std::string& parameter, Convert convert) const {
    try {
      return convert(required(parameter));
    } catch (const BadValue& bad) {
      throw BadParameter(parameter, bad.what());
    }
  }

  std::uint64_t whole(const std::string& parameter) const { return read(parameter, wholeFromJson); }
  double number(const std::string& parameter) const { return read(parameter, doubleFromJson); }
  bool flag(const std::string& parameter) const { return read(parameter, boolFromJson); }
  std::set<std::uint64_t> ids(const std::string& parameter) const { return read(parameter, idsFromJson); }
  std::string text(const std::string& parameter) const { return read(parameter, textFromJson); }
  std::wstring wideText(const std::string& parameter) const { return read(parameter, wideTextFromJson); }
  std::string name(const std::string& parameter) const { return read(parameter, nameFromJson); }
  std::string path(const std::string& parameter) const { return read(parameter, pathFromJson); }

 private:
  const Json& required(const std::string& parameter) const;

  const Json& members;
};

}  // namespace tiepoint::workbench
