// Paths of wide text.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>

namespace ZOR::reg {

/// The path in the system's own characters: as it stands where they are wide, otherwise UTF-8. No
/// locale takes part, neither the process's nor the one that a host has given to Boost.Filesystem.
/// Throws std::runtime_error for text that has no UTF-8 form (half a surrogate pair, a character
/// beyond 0x10FFFF) where it needs one.
boost::filesystem::path pathOfText(const std::wstring& text);

}  // namespace ZOR::reg
