// What a name may look like.
#pragma once

#include <string>

namespace ZOR::reg {

/// True for a name that a group may take: not empty, none of the characters <>/\*|?:". in it, and
/// no device name of the host's platform (con, prn, aux, nul, com1 to com9, lpt1 to lpt9, in any
/// case), so that a file of that stem can be made.
bool isGroupName(const std::string& name);

/// True for a name that a reference point may take: not empty, no tab and no blank.
bool isPointName(const std::string& name);

}  // namespace ZOR::reg
