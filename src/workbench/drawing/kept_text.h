// The form in which a drawing file keeps wide text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tiepoint::workbench {

/// UTF-8, in which a surrogate that is left alone gets the three bytes of its number, so that every
/// text comes back as it was. Throws OdError(eInvalidInput) for a number beyond Unicode.
std::string keptFormOf(std::wstring_view text);

/// The text; nothing for bytes that keptFormOf doesn't give.
std::optional<std::wstring> textFromKeptForm(std::string_view kept);

}  // namespace tiepoint::workbench
