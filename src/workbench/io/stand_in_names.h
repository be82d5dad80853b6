// Names that the module can't carry, under names that it can.
//
// The module's names are windows-1251, and its files divide fields at blanks, commas and semicolons.
// A character that it can't carry travels as _xHHHH_, its code point in four to six hexadecimal
// digits; an underline that would look like the beginning of such an escape travels as _x005F_.
#pragma once

#include <string>

namespace tiepoint::workbench {

/// The name under which a point travels: the name itself where the module can carry it. Different
/// names have different stand-ins. Throws EncodingError for what isn't UTF-8.
std::string standInName(const std::string& utf8);

/// The same for a group, whose name comes from a path: blanks, commas and semicolons are fine.
std::string standInGroupName(const std::string& utf8);

/// The name as it was written; the reverse of both. What is no escape of theirs stays as it is.
std::string nameOfStandIn(const std::string& utf8);

/// A name for the module, in windows-1251, and one of its names as it was written, in UTF-8.
std::string moduleName(const std::string& utf8);
std::string moduleGroupName(const std::string& utf8);
std::string nameOfModule(const std::string& narrow);

}  // namespace tiepoint::workbench
