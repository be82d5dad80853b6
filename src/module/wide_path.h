// Paths as the host's file dialog gives them: wide text.
#pragma once

#include <string>

namespace ZOR::reg {

/// boost::filesystem::path::stem() of a path in wide text: the last element up to its last dot. It
/// is taken on the wide text itself, so that a path without a narrow form has its stem too.
std::wstring stemOf(const std::wstring& path);

/// The path in narrow characters: UTF-8, and on Windows what Boost.Filesystem's conversion makes of
/// it. Throws std::runtime_error when there is no such form.
std::string narrowPath(const std::wstring& path);

}  // namespace ZOR::reg
