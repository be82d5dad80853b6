#include "session/name_rules.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/regex.hpp>

namespace ZOR::reg {

bool isGroupName(const std::string& name) {
  if (name.empty() || name.find_first_of("<>/\\*|?:\".") != std::string::npos) return false;
  static const boost::regex deviceName("con|prn|aux|nul|com[1-9]|lpt[1-9]");
  return !boost::regex_match(boost::algorithm::to_lower_copy(name), deviceName);
}

bool isPointName(const std::string& name) { return !name.empty() && name.find_first_of("\t ") == std::string::npos; }

}  // namespace ZOR::reg
